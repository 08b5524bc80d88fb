// A call lowers the other apps along the ramp and gives them back; what is no call doesn't.

#include "tests/integration/support/Await.h"
#include "tests/integration/support/FadewellTest.h"

#include <cmath>
#include <csignal>
#include <thread>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;

constexpr double lowered = 0.2;
constexpr double downSeconds = 0.15;
constexpr double upSeconds = 0.35;

/// The tone's factor in each hundredth of a second.
std::vector<double> levels(const Sound& sound)
{
    std::vector<double> all;
    for (std::size_t first = 0; first + frames(10ms) <= sound.frames(); first += frames(10ms)) {
        all.push_back(amplitudeOfTone(sound.part(first, frames(10ms)).left) / toneAmplitude);
    }
    return all;
}

/// From its middle on back and forth, the ramp is the exponential one between its two ends.
void expectRamp(const Sound& sound, double from, double to, double seconds)
{
    const auto level = levels(sound);
    const double half = (from + to) / 2;
    const auto middle = std::find_if(level.begin(), level.end(), [&](double each) {
        return from > to ? each > 0 && each < half : each > half;
    });
    ASSERT_GT(middle - level.begin(), 20);
    ASSERT_GT(level.end() - middle, 60);
    // The crossing lies between two of them.
    const double share = (half - middle[-1]) / (middle[0] - middle[-1]) - 1;
    for (int step = -6; step <= 50; step += 4) {
        const double time = (step - share) / 100 + seconds * std::log(2);
        const double ideal = time < 0 ? from : to + (from - to) * std::exp(-time / seconds);
        EXPECT_NEAR(decibels(middle[step]), decibels(ideal), 0.3)
            << step << "0 ms after the middle" << measuringNote(sound);
    }
}

class CallTest : public FadewellTest {
protected:
    static nlohmann::json callMode()
    {
        return nlohmann::json::parse(Fadewell::control({"call-mode", "--json"}).output);
    }
    static std::size_t microphoneUsers()
    {
        const auto shown = Fadewell::control({"microphone", "--json"}).output;
        return nlohmann::json::parse(shown).at("users").size();
    }

    /// The tests' own client under the name of a call app; silent until it gets SIGUSR1.
    static ChildProcess callApp(const std::string& protocol)
    {
        const auto program = tone().parent_path() / "zoom";
        std::filesystem::copy_file(FADEWELL_PROGRAMS "/sound_client",
                                   program,
                                   std::filesystem::copy_options::skip_existing);
        return ChildProcess({program, protocol, tone(), "capture"});
    }

    static ChildProcess startCall(const std::string& kind)
    {
        if (kind == "chromium") {
            return callInBrowser(tone().parent_path());
        }
        auto app = callApp(kind);
        std::this_thread::sleep_for(300ms);
        app.signal(SIGUSR1);
        return app;
    }
};

class CallKindTest : public CallTest, public testing::WithParamInterface<const char*> {};

TEST_P(CallKindTest, LowersOthersAlongTheRampAndGivesThemBack)
{
    const auto player = playTone("paplay");
    const auto before = speakers_->now();
    auto call = startCall(GetParam());
    ASSERT_TRUE(await([] { return microphoneUsers() == 1; })) << call.errors();
    const auto captured = speakers_->now();
    ASSERT_TRUE(speakers_->awaitGain(decibels(lowered)));
    EXPECT_EQ(callMode().at("names").size(), 1U);
    expectRamp(speakers_->readUntilNow(before), 1, lowered, downSeconds);
    const auto quietTime = frames(700ms); // what it takes to see the microphone's user included
    EXPECT_GT(toneGain(speakers_->read(captured, quietTime - frames(100ms))), -0.5)
        << "lowered before the call had lasted for a second";

    call.signal(SIGTERM);
    static_cast<void>(call.wait());
    const auto end = speakers_->now();
    EXPECT_NEAR(toneGain(speakers_->read(end, frames(4500ms))), decibels(lowered), 0.1);
    ASSERT_TRUE(speakers_->awaitGain(0));
    expectRamp(speakers_->readUntilNow(end + frames(4s)), lowered, 1, upSeconds);
    EXPECT_FALSE(callMode().at("isActive"));
}

INSTANTIATE_TEST_SUITE_P(Calls,
                         CallKindTest,
                         testing::Values("native", "pulse", "chromium"),
                         [](const auto& test) { return test.param; });

TEST_F(CallTest, NobodyCallsWhoDoesNotListenToAMicrophone)
{
    const auto program = tone().parent_path() / "discord";
    std::filesystem::copy_file("/usr/bin/pacat", program);
    const std::string silence = tone().parent_path() / "silence";
    const ChildProcess quiet[] = {callApp("native"),
                                  callApp("pulse"),
                                  ChildProcess({program, "-r", "-d", "speakers.monitor", silence})};
    ASSERT_TRUE(await([] { return Session::nodesContaining("zoom").size() == 2; }))
        << quiet[0].errors() << quiet[1].errors();
    ASSERT_TRUE(await([&] {
        return std::filesystem::exists(silence) && std::filesystem::file_size(silence) > 0;
    })) << quiet[2].errors();
    std::this_thread::sleep_for(1500ms);
    EXPECT_EQ(microphoneUsers(), 0U);
    EXPECT_FALSE(callMode().at("isActive"));
}

class LoweredStartTest : public CallTest, public testing::WithParamInterface<const char*> {};

TEST_P(LoweredStartTest, NewAppsGoDownFromTheirFirstFrameAndTheirNextStreamsStartLow)
{
    const auto call = callApp("native");
    std::this_thread::sleep_for(300ms);
    call.signal(SIGUSR1);
    ASSERT_TRUE(await([] { return callMode().at("isActive") == true; }));
    std::this_thread::sleep_for(300ms); // A path stands ready.

    std::vector<Frame> second(48'000);
    for (std::size_t i = 0; i < second.size(); ++i) {
        const auto phase =
            2 * 3.14159265358979 * toneFrequency * static_cast<double>(i) / sampleRate;
        second[i].fill(static_cast<float>(toneAmplitude * std::cos(phase)));
    }
    const auto file = tone().parent_path() / "second.wav";
    writeFrames(file, second);
    const auto start = speakers_->now();
    ChildProcess player({FADEWELL_PROGRAMS "/sound_client", GetParam(), file, "2"});
    ASSERT_EQ(player.wait(), 0) << player.errors();
    const auto heard = partsBetweenHoles(speakers_->readUntilNow(start), frames(100ms));
    ASSERT_EQ(heard.size(), 2U);
    const auto first = levels(heard[0]);
    for (const std::size_t step : {0U, 5U, 10U, 20U, 40U, 80U}) {
        const double time = (static_cast<double>(step) + 0.5) / 100;
        const double ideal = lowered + (1 - lowered) * std::exp(-time / downSeconds);
        EXPECT_NEAR(decibels(first[step]), decibels(ideal), 0.4) << step << "0 ms after its start";
    }
    EXPECT_NEAR(decibels(levels(heard[1]).front()), decibels(lowered), 0.1);
}

INSTANTIATE_TEST_SUITE_P(Protocols,
                         LoweredStartTest,
                         testing::Values("native", "pulse"),
                         [](const auto& test) { return test.param; });

} // namespace
} // namespace fadewell::integration
