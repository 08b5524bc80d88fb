// What Fadewell shows of the microphone is what every other mixer sees, whoever changes it.

#include "tests/integration/support/Await.h"
#include "tests/integration/support/FadewellTest.h"
#include "tests/integration/support/Outage.h"

#include <thread>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;

constexpr auto microphone = "microphone";
constexpr auto headset = "headset-microphone";

class MicrophoneTest : public FadewellTest {
protected:
    void SetUp() override
    {
        FadewellTest::SetUp();
        pactl({"set-source-mute", microphone, "0"});
        pactl({"set-source-volume", microphone, "100%"});
    }

    static bool hasVolume(const std::string& device, const std::string& percent)
    {
        return pactl({"get-source-volume", device}).find(" " + percent + " ") != std::string::npos;
    }
    static nlohmann::json shown()
    {
        return nlohmann::json::parse(Fadewell::control({"microphone", "--json"}).output);
    }
    static bool isShownOff() { return shown().at("isMuted"); }
    /// Once what was done has come round.
    static bool staysOff(const std::string& device)
    {
        std::this_thread::sleep_for(500ms);
        return await([&] { return isOff(device); }) && isShownOff();
    }

    static void restartServer(std::chrono::milliseconds absence = 0ms)
    {
        endProgram(soundServer, SIGKILL);
        endProgram(sessionManager);
        std::this_thread::sleep_for(absence);
        startProgram(soundServer);
        startProgram(sessionManager);
        awaitSession();
    }

    static void addHeadset()
    {
        static_cast<void>(
            runTool({"pw-cli",
                     "create-node",
                     "adapter",
                     "{ factory.name=support.null-audio-sink object.linger=true node.name=" +
                         std::string(headset) +
                         " node.description=Headset media.class=Audio/Source/Virtual "
                         "audio.position=[MONO] priority.session=100 }"}));
    }
};

TEST_F(MicrophoneTest, VolumeIsTheOneThatOthersShow)
{
    for (const std::string percent : {"50%", "100%", "0%", "37%"}) {
        command({"microphone", "volume", percent});
        EXPECT_TRUE(await([&] { return hasVolume(microphone, percent); })) << percent;
    }
    pactl({"set-source-volume", microphone, "25%"});
    EXPECT_TRUE(await([] { return std::abs(shown().at("volume").get<double>() - 0.25) < 0.005; }));
    EXPECT_EQ(shown().at("deviceName"), "Built-in Microphone");
}

TEST_F(MicrophoneTest, WhatOthersUndoIsMutedAgainUntilTheyInsist)
{
    command({"microphone", "off"});
    EXPECT_TRUE(await([] { return isOff(microphone); }));
    pactl({"set-source-volume", microphone, "80%"});
    EXPECT_TRUE(staysOff(microphone));
    for (int i = 0; i < 3; ++i) {
        pactl({"set-source-mute", microphone, "0"});
        EXPECT_TRUE(staysOff(microphone)) << i;
    }
    pactl({"set-source-mute", microphone, "0"});
    EXPECT_TRUE(await([] { return !isShownOff(); }));
    EXPECT_FALSE(isOff(microphone));
    EXPECT_NE(fadewell_->log().find("Another program keeps turning the microphone on"),
              std::string::npos);
    command({"microphone", "off"});
    EXPECT_TRUE(staysOff(microphone)) << "a new wish counts again";
    command({"microphone", "on"});
    EXPECT_TRUE(await([] { return !isOff(microphone); }));
}

TEST_F(MicrophoneTest, AMutedOneThatIsUnpluggedComesBackMuted)
{
    for (const auto away : {200ms, 3000ms}) {
        command({"microphone", "off"});
        ASSERT_TRUE(await([] { return isOff(microphone); }));
        removeOutput(microphone);
        std::this_thread::sleep_for(away);
        addMissingDevices();
        ASSERT_TRUE(await([] { return shown().at("deviceName") == "Built-in Microphone"; }));
        EXPECT_TRUE(staysOff(microphone)) << away.count();
        command({"microphone", "on"});
        EXPECT_TRUE(await([] { return !isOff(microphone); }));
    }
}

TEST_F(MicrophoneTest, AMuteThatTheServerNeverTookIsThereAfterItsRestart)
{
    signalProgram(soundServer, SIGSTOP);
    command({"microphone", "off"});
    std::this_thread::sleep_for(400ms); // until no answer to it is awaited any more
    restartServer();
    EXPECT_TRUE(await([] { return isOff(microphone); }));
    EXPECT_TRUE(staysOff(microphone));
}

/// Restarts that are over before anybody is told of them, and others.
TEST_F(MicrophoneTest, WhatWasChosenHoldsOverRestartsOfTheServer)
{
    for (const auto absence : {0ms, 2300ms}) {
        for (const bool isMuted : {true, false}) {
            command({"microphone", isMuted ? "off" : "on"});
            // The session manager saves a second later: it recalls a mute, and no unmute after it.
            std::this_thread::sleep_for(isMuted ? 1500ms : 60ms);
            restartServer(absence);
            EXPECT_TRUE(await([&] { return isOff(microphone) == isMuted; }))
                << absence.count() << isMuted;
            std::this_thread::sleep_for(500ms);
            EXPECT_EQ(isOff(microphone), isMuted) << absence.count();
            EXPECT_EQ(isShownOff(), isMuted) << absence.count();
        }
    }
}

TEST_F(MicrophoneTest, AMuteFollowsTheDefaultInput)
{
    addHeadset();
    command({"microphone", "off"});
    ASSERT_TRUE(await([] { return isOff(microphone); }));
    pactl({"set-default-source", headset});
    EXPECT_TRUE(await([] { return isOff(headset) && !isOff(microphone); }));
    EXPECT_EQ(shown().at("deviceName"), "Headset");
    EXPECT_TRUE(isShownOff());
    pactl({"set-default-source", microphone});
    EXPECT_TRUE(await([] { return !isOff(headset) && isOff(microphone); }));
    EXPECT_EQ(fadewell_->end(SIGTERM), 0);
    EXPECT_FALSE(isOff(microphone)) << "nothing stays muted";
    fadewell_.reset();
    removeOutput(headset);
}

} // namespace
} // namespace fadewell::integration
