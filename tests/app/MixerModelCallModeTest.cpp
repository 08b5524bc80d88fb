#include "tests/app/MixerModelFixture.h"

namespace fadewell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MixerModelCallModeTest : public MixerModelFixture {
protected:
    void SetUp() override
    {
        MixerModelFixture::SetUp();
        launch();
        music_ = addApp(10, "com.music", "Music");
        zoom_ = addApp(11, "us.zoom.xos", "Zoom");
        zoomInput_ = addProcess(11, false);
    }

    void startCall()
    {
        setRunning(zoomInput_, false, true);
        time_->advance(1.1);
    }

    [[nodiscard]] std::optional<CallStatus> badge(const std::string& appID) const
    {
        return row(appID).value_or(AppRowState()).callStatus;
    }

    AudioObjectID music_ = 0;
    AudioObjectID zoom_ = 0;
    AudioObjectID zoomInput_ = 0;
};

TEST_F(MixerModelCallModeTest, LowersOtherAppsDuringACall)
{
    const auto discord = addApp(12, "com.hnc.Discord", "discord", false);
    hardware_->setRunning(discord, false, true);
    setRunning(zoomInput_, false, true);
    static_cast<void>(mixerLines());
    time_->advance(0.9);
    EXPECT_FALSE(model_->isCallModeActive.get());
    time_->advance(0.2); // No snapshot is needed.
    EXPECT_THAT(
        mixerLines(),
        ElementsAre("mixer info: Call mode on", "mixer debug: Apps: com.music, us.zoom.xos"));
    EXPECT_THAT(model_->callAppNames.get(), ElementsAre("Zoom", "discord")); // By code point,
    EXPECT_THAT(model_->microphoneUserNames.get(), ElementsAre("discord", "Zoom")); // by locale.
    const auto users = model_->microphoneUsers.get();
    ASSERT_EQ(users.size(), 2U);
    EXPECT_EQ(users[1].id, "us.zoom.xos");
    hardware_->removeProcess(discord);
    EXPECT_EQ(badge("com.music"), CallStatus::lowered);
    EXPECT_EQ(badge("us.zoom.xos"), CallStatus::inCall);
    EXPECT_NEAR(heard(music_, speakers_), 0.2, 1e-3);
    EXPECT_EQ(heard(zoom_, speakers_), 1);
    ASSERT_TRUE(gate_->lowered);
    EXPECT_EQ(gate_->lowered->duck, 0.2);
    EXPECT_THAT(gate_->lowered->exempt, testing::IsSupersetOf({"us.zoom.xos", "com.hnc.Discord"}));

    setRunning(music_, false, false);
    EXPECT_FALSE(badge("com.music")); // Silent, but lowered all the same.
    setRunning(music_, true, false);
    EXPECT_NEAR(heard(music_, speakers_), 0.2, 1e-3);

    setRunning(zoomInput_, false, false);
    static_cast<void>(mixerLines());
    time_->advance(4.8);
    EXPECT_TRUE(model_->isCallModeActive.get());
    time_->advance(0.2);
    EXPECT_THAT(model_->callAppNames.get(), IsEmpty());
    EXPECT_FALSE(gate_->lowered);
    EXPECT_THAT(
        mixerLines(),
        ElementsAre("mixer info: Call mode off", "mixer debug: Apps: com.music, us.zoom.xos"));
    EXPECT_NEAR(heard(music_, speakers_), 1, 1e-3);
}

TEST_F(MixerModelCallModeTest, EveryMicrophoneUserIsExempt)
{
    const auto player = addApp(12, "com.player", "Player");
    setRunning(addProcess(12, false), false, true);
    setRunning(addApp(13, "com.recorder", "Recorder", false), false, true);
    onMain([this] { model_->setCallModeActive(true); });
    EXPECT_FALSE(row("com.recorder"));
    EXPECT_EQ(badge("com.player"), CallStatus::inCall);
    EXPECT_EQ(heard(player, speakers_), 1);
    EXPECT_NEAR(heard(music_, speakers_), 0.2, 1e-3);
    EXPECT_FALSE(model_->isCallDetected.get());
}

TEST_F(MixerModelCallModeTest, OverrideWinsUntilItIsTakenBackOrTheCallEnds)
{
    startCall();
    onMain([this] { model_->toggleCallMode(); });
    EXPECT_TRUE(model_->isCallDetected.get());
    EXPECT_FALSE(model_->isCallModeActive.get());
    EXPECT_FALSE(badge("com.music"));
    EXPECT_NEAR(heard(music_, speakers_), 1, 1e-3);

    onMain([this] { model_->followCallDetection(); });
    EXPECT_TRUE(model_->isCallModeActive.get());

    onMain([this] { model_->setCallModeActive(true); });
    setRunning(zoomInput_, false, false);
    time_->advance(5.1);
    EXPECT_FALSE(model_->isCallModeActive.get());
    onMain([this] { model_->toggleCallMode(); });
    EXPECT_NEAR(heard(music_, speakers_), 0.2, 1e-3);
}

TEST_F(MixerModelCallModeTest, SettingsTakeEffectAtOnceAndAreSaved)
{
    startCall();
    onMain([this] { model_->setCallModeSettings({true, 0.5, {}}); });
    EXPECT_NEAR(heard(music_, speakers_), 0.5, 1e-3);
    onMain([this] { model_->setCallModeSettings({false, 0.5, {}}); });
    EXPECT_FALSE(model_->isCallModeActive.get());
    onMain([this] { model_->setCallModeSettings({true, 0.2, {"us.zoom.xos"}}); });
    EXPECT_TRUE(model_->isCallModeActive.get());
    time_->advance(5.1); // Without a snapshot the excluded app has left the call.
    EXPECT_FALSE(model_->isCallDetected.get());

    launch();
    startCall();
    EXPECT_EQ(model_->callModeSettings.get(), CallModeSettings(true, 0.2, {"us.zoom.xos"}));
    EXPECT_FALSE(model_->isCallDetected.get());
}

} // namespace
} // namespace fadewell
