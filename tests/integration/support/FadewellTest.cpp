#include "tests/integration/support/FadewellTest.h"

#include "tests/integration/support/Await.h"

#include <csignal>

namespace fadewell::integration {

using namespace std::chrono_literals;

void FadewellTest::SetUp()
{
    SoundTest::SetUp();
    fadewell_.emplace();
    command({"forget", "--all"});
}

void FadewellTest::TearDown()
{
    if (fadewell_) {
        EXPECT_EQ(fadewell_->end(SIGTERM), 0);
        if (HasFailure()) {
            ADD_FAILURE() << "Fadewell's log:\n" << fadewell_->log();
        }
    }
}

ChildProcess FadewellTest::playTone(const std::string& kind, double gain)
{
    auto player = play(kind, tone());
    EXPECT_TRUE(speakers_->awaitGain(gain)) << player.errors();
    EXPECT_TRUE(await([&] { return !appOf(player).empty(); })) << Fadewell::apps().dump(2);
    return player;
}

std::string FadewellTest::appOf(const ChildProcess& player)
{
    return Fadewell::appOf(player.pid());
}

void FadewellTest::command(std::vector<std::string> arguments)
{
    const auto result = Fadewell::control(std::move(arguments));
    EXPECT_EQ(result.code, 0) << result.output << result.errors;
}

std::string FadewellTest::pactl(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), {"timeout", "5", "pactl"});
    return runTool(arguments).output;
}

bool FadewellTest::isOff(const std::string& input)
{
    return pactl({"get-source-mute", input}).find("yes") != std::string::npos;
}

void expectGain(const Recorder& recorder, double gain)
{
    EXPECT_TRUE(recorder.awaitGain(gain)) << "for " << gain << " dB";
    Sound sound;
    for (int attempt = 0; attempt < 3 && (attempt == 0 || !sound.isComplete); ++attempt) {
        sound = recorder.read(recorder.now(), frames(500ms));
    }
    EXPECT_NEAR(toneGain(sound), gain, 0.02) << measuringNote(sound);
}

std::string measuringNote(const Sound& sound)
{
    return sound.isComplete ? ""
                            : "The output's clock jumped: the machine was too busy to measure.";
}

} // namespace fadewell::integration
