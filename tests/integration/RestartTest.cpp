// The sound system's programs end and come back, devices vanish and return: afterwards everything
// is as it was, at once.

#include "tests/integration/support/Await.h"
#include "tests/integration/support/FadewellTest.h"
#include "tests/integration/support/Outage.h"

#include <algorithm>
#include <cmath>
#include <csignal>
#include <thread>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;

/// What is measured soon after a disturbance may have a hole yet.
void expectSoon(const Recorder& recorder, double gain)
{
    EXPECT_TRUE(await([&] {
        const auto sound = recorder.read(recorder.now(), frames(250ms));
        return std::abs(toneGain(sound) - gain) < 0.02;
    })) << "for "
        << gain << " dB, heard " << toneGain(recorder.read(recorder.now(), frames(250ms)));
}

/// Programs that end in this order and come back in that one.
struct Restart {
    const char* name;
    int signal;
    std::vector<const char*> ended;
    std::vector<const char*> started;
};

void PrintTo(const Restart& restart, std::ostream* out)
{
    *out << restart.name;
}

const Restart restarts[] = {
    {"SessionManager", SIGTERM, {sessionManager}, {sessionManager}},
    {"SessionManagerKilled", SIGKILL, {sessionManager}, {sessionManager}},
    {"Pulse", SIGTERM, {pulseServer}, {pulseServer}},
    {"PulseKilled", SIGKILL, {pulseServer}, {pulseServer}},
    {"Server", SIGTERM, {soundServer, sessionManager}, {soundServer, sessionManager}},
    {"ServerKilled", SIGKILL, {soundServer, sessionManager}, {soundServer, sessionManager}},
    {"AllPulseFirst",
     SIGTERM,
     {pulseServer, sessionManager, soundServer},
     {soundServer, pulseServer, sessionManager}},
    {"AllPulseLast",
     SIGKILL,
     {soundServer, pulseServer, sessionManager},
     {soundServer, sessionManager, pulseServer}},
    {"SessionManagerAndPulse",
     SIGKILL,
     {sessionManager, pulseServer},
     {pulseServer, sessionManager}}};

class RestartTest : public FadewellTest, public testing::WithParamInterface<Restart> {
protected:
    static constexpr double gain = 0.4;

    /// A player of each kind at 40% on the headphones, and a muted microphone.
    void SetUp() override
    {
        FadewellTest::SetUp();
        command({"microphone", "off"});
        for (const std::string kind : {"pw-play", "paplay"}) {
            auto player = playTone(kind);
            const auto app = appOf(player);
            command({"volume", app, "40%"});
            command({"output", app, headphones});
            ASSERT_TRUE(headphones_->awaitGain(decibels(gain)));
            player.signal(SIGTERM);
            ASSERT_TRUE(headphones_->awaitSilence());
        }
    }

    void TearDown() override
    {
        FadewellTest::TearDown();
        EXPECT_TRUE(await([] { return Session::nodesContaining("fadewell").empty(); }));
        EXPECT_EQ(runTool({"pw-metadata", "0"}).output.find("fadewell"), std::string::npos);
    }

    /// The recorders end with what they record.
    void record()
    {
        speakers_ = std::make_unique<Recorder>(speakers);
        headphones_ = std::make_unique<Recorder>(headphones);
    }

    /// A player that has lived on, or a new one, is heard as before within a second and only there.
    void expectAsBefore(ChildProcess& before, const std::string& kind)
    {
        std::optional<ChildProcess> after;
        if (!before.isRunning()) {
            after.emplace(play(kind, tone()));
        }
        EXPECT_TRUE(headphones_->awaitGain(decibels(gain), 2s)) << kind;
        const auto sound = headphones_->readUntilNow(0);
        const auto first = firstSound(sound);
        EXPECT_LE(sound.frames() - first, frames(1s + 150ms)) << kind;
        EXPECT_TRUE(speakers_->awaitSilence());
        for (auto* player : {&before, after ? &*after : &before}) {
            player->signal(SIGTERM);
        }
        EXPECT_TRUE(headphones_->awaitSilence());
        record();
    }
};

TEST_P(RestartTest, WhatIsRememberedAppliesAgain)
{
    const auto& [name, signal, ended, started] = GetParam();
    const auto outputs = Fadewell::control({"outputs", "--json"}).output;
    for (const std::string kind : {"pw-play", "paplay"}) {
        auto player = play(kind, tone());
        ASSERT_TRUE(headphones_->awaitGain(decibels(gain)));
        speakers_.reset();
        headphones_.reset();
        const auto begin = std::chrono::steady_clock::now();
        for (const auto* program : ended) {
            endProgram(program, signal);
        }
        for (const auto* program : started) {
            startProgram(program);
        }
        awaitSession();
        // Longer absences are told, and that is no fault: the machine was too busy.
        const bool wasShort = std::chrono::steady_clock::now() - begin < 1800ms;
        record();
        expectAsBefore(player, kind);
        EXPECT_TRUE(!wasShort || fadewell_->log().find("went away") == std::string::npos);
        EXPECT_EQ(Fadewell::control({"outputs", "--json"}).output, outputs);
        EXPECT_TRUE(await([] {
            const auto microphone = runTool({"pw-dump", "microphone"}).output;
            return microphone.find("\"mute\": true") != std::string::npos;
        }));
    }
}

INSTANTIATE_TEST_SUITE_P(Order, RestartTest, testing::ValuesIn(restarts), [](const auto& test) {
    return std::string(test.param.name);
});

class DisturbanceTest : public FadewellTest {
protected:
    /// Nothing had to be built anew.
    void expectUndisturbed() const
    {
        const auto log = fadewell_->log();
        for (const auto* word : {"Rebuilding", "Released", "Paused"}) {
            EXPECT_EQ(log.find(word), std::string::npos) << word;
        }
    }

    static void forceClock(const std::string& what, const std::string& value)
    {
        EXPECT_EQ(
            runTool({"pw-metadata", "-n", "settings", "0", "clock.force-" + what, value}).code, 0);
    }
    static std::string outputs() { return Fadewell::control({"outputs", "--json"}).output; }
    static constexpr double gain = 0.4;
};

TEST_F(DisturbanceTest, AnOutputThatIsBackSoonNeverWent)
{
    auto player = playTone("pw-play");
    command({"volume", appOf(player), "40%"});
    for (const auto* gone : {headphones, speakers}) {
        command({"output", appOf(player), gone});
        auto& stays = gone == headphones ? *speakers_ : *headphones_;
        auto& goes = gone == headphones ? headphones_ : speakers_;
        expectSoon(*goes, decibels(gain));
        const auto before = outputs();
        goes.reset();
        removeOutput(gone);
        EXPECT_TRUE(stays.awaitGain(decibels(gain)));
        EXPECT_EQ(outputs(), before);
        addOutput(gone, gone == headphones ? "Headphones" : "Speakers");
        EXPECT_EQ(outputs(), before);
        goes = std::make_unique<Recorder>(gone);
        expectSoon(*goes, decibels(gain));
        EXPECT_TRUE(stays.awaitSilence());
    }
    expectUndisturbed();
}

TEST_F(DisturbanceTest, TheDefaultsRateAndQuantumChange)
{
    auto player = playTone("pw-play");
    command({"volume", appOf(player), "40%"});
    chooseDefaultOutput(headphones);
    expectSoon(*headphones_, decibels(gain));
    EXPECT_TRUE(speakers_->awaitSilence());
    chooseDefaultOutput(speakers);
    expectSoon(*speakers_, decibels(gain));
    for (const auto* frames : {"256", "2048", "0"}) {
        forceClock("quantum", frames);
        expectSoon(*speakers_, decibels(gain));
    }
    forceClock("rate", "44100");
    // The tone is no whole number of periods now, but it is as loud.
    EXPECT_TRUE(await([this] {
        const auto sound = speakers_->read(speakers_->now(), frames(100ms));
        const auto peak = *std::max_element(sound.left.begin(), sound.left.end());
        return std::abs(peak - toneAmplitude * gain) < 0.002;
    }));
    forceClock("rate", "48000");
    expectSoon(*speakers_, decibels(gain));
    forceClock("rate", "0");
}

TEST_F(DisturbanceTest, CyclesOfTapsBecomeShorterAtOnceAndLongerInTime)
{
    // One and a half times the cycle that was measured at a tap.
    const auto expectLongest = [](const std::string& expected) {
        std::string longest;
        EXPECT_TRUE(await([&] {
            longest = runCommand({"sh", "-c", R"(pw-dump | grep max-latency | sort -u)"}).output;
            return longest.find('"' + expected + '"') != std::string::npos &&
                   std::count(longest.begin(), longest.end(), '\n') == 1;
        })) << longest;
    };
    auto patient = playTone("pw-play");
    command({"volume", appOf(patient), "40%"});
    expectLongest("3072/48000");
    {
        auto quick = play("mpv", tone());
        ASSERT_TRUE(await([&] { return !appOf(quick).empty(); }));
        command({"volume", appOf(quick), "50%"});
        expectLongest("768/48000");
    }
    expectLongest("3072/48000");
    forceClock("quantum", "256");
    expectLongest("384/48000");
    forceClock("quantum", "0");
    expectLongest("3072/48000");
}

/// Restarted, it now and then links a stream to an output and to its tap, and forgets the former.
TEST_F(DisturbanceTest, AForgottenLinkOfTheSessionManagerGoesAndAPatchStays)
{
    const auto player = playTone("pw-play");
    command({"volume", appOf(player), "40%"});
    expectSoon(*speakers_, decibels(gain));
    endProgram(sessionManager);
    startProgram(sessionManager);
    awaitSession();
    std::string manager;
    for (const auto& object : nlohmann::json::parse(runTool({"pw-dump"}).output)) {
        const auto props = object.value("props", nlohmann::json::object());
        if (props.value("metadata.name", "") == "default") {
            manager = props.at("client.id").dump();
        }
    }
    const auto link = [](const std::string& side, const std::string& props) {
        const auto result = runTool({"pw-link",
                                     "--props=" + props,
                                     "pw-play:output_" + side,
                                     headphones + (":playback_" + side)});
        EXPECT_EQ(result.code, 0) << result.errors;
    };
    const auto isLinked = [](const std::string& side) {
        const auto expected = headphones + (":playback_" + side) + "\n  |<- pw-play:output_";
        return runTool({"pw-link", "-l"}).output.find(expected) != std::string::npos;
    };
    link("FR", "{}");
    link("FL", "{ \"client.id\": " + manager + " }");
    EXPECT_TRUE(isLinked("FL"));
    EXPECT_TRUE(await([&] { return !isLinked("FL"); }));
    EXPECT_TRUE(isLinked("FR"));
}

TEST_F(DisturbanceTest, AMachineThatSleepsWakesUpAsItWas)
{
    auto player = playTone("pw-play");
    command({"volume", appOf(player), "40%"});
    expectSoon(*speakers_, decibels(gain));
    const auto all = [&](int signal) {
        for (const auto process : fadewell_->processes()) {
            kill(process, signal);
        }
        player.signal(signal);
        for (const auto* program : {pulseServer, sessionManager, soundServer}) {
            signalProgram(program, signal);
        }
    };
    all(SIGSTOP);
    std::this_thread::sleep_for(5s);
    all(SIGCONT);
    expectSoon(*speakers_, decibels(gain));
    expectUndisturbed();
}

TEST_F(DisturbanceTest, AThousandStreamsComeAndGo)
{
    auto player = playTone("pw-play");
    command({"volume", appOf(player), "40%"});
    const auto nodes = Session::nodesContaining("fadewell").size();
    ChildProcess churn({FADEWELL_PROGRAMS "/sound_client", "native", tone(), "churn"});
    EXPECT_EQ(churn.wait(120s), 0) << "a stream was never linked: " << churn.errors();
    expectSoon(*speakers_, decibels(gain));
    EXPECT_TRUE(await([] { return Fadewell::apps().size() == 1; }));
    EXPECT_EQ(Session::nodesContaining("fadewell").size(), nodes);
}

} // namespace
} // namespace fadewell::integration
