#include "tests/app/MixerModelFixture.h"

namespace fadewell {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class MixerModelTest : public MixerModelFixture {};

TEST_F(MixerModelTest, AppliesWhatIsRememberedWhenAnAppPlays)
{
    const AppAudioSettings quiet(0.4, false, {}, {});
    const AppAudioSettings muted(0.9, true, {}, {});
    workspace_->installed["com.tube"] = {"/apps/tube", "Another Tube", {"tube", {}}};
    AppSettingsStore(defaults_).set(quiet, "com.music");
    AppSettingsStore(defaults_).set(muted, "com.tube");
    launch();
    EXPECT_THAT(model_->rememberedApps.get(),
                ElementsAre(RememberedApp{"com.tube", "Another Tube", {"tube", {}}, muted},
                            RememberedApp{"com.music", "com.music", AppIcon::generic(), quiet}));
    EXPECT_NEAR(heard(addApp(10, "com.music", "Music"), speakers_), 0.4, 1e-3);
    EXPECT_EQ(heard(addApp(11, "com.tube", "Tube"), speakers_), 0);
    EXPECT_EQ(heard(addApp(12, "com.other", "Other"), speakers_), 1);
    EXPECT_EQ(row("com.tube")->settings, muted);
    EXPECT_EQ(row("com.tube")->ownOutputDeviceID, speakers_);
    EXPECT_EQ(model_->outputDeviceName("headset"), "Headset");
    EXPECT_FALSE(model_->outputDeviceName("gone"));
}

TEST_F(MixerModelTest, ShowsRowsByNameAndPublishesOnlyChanges)
{
    launch();
    addApp(10, "com.a", "app 10");
    addApp(11, "com.b", "App 2");
    addApp(12, "com.silent", "Silent", false);
    addApp(workspace_->pid, "app.own", "Own");
    addProcess(99, true); // Nobody owns it.
    EXPECT_THAT(mixerLines(), Contains("mixer debug: Apps: com.b, com.a"));
    EXPECT_EQ(model_->apps.get().size(), 2U);

    int published = 0;
    const auto observer = model_->apps.observe([&](const auto&) { ++published; });
    addProcess(98, false);
    EXPECT_THAT(mixerLines(), ElementsAre("mixer debug: Snapshot: 6 processes, 4 playing"));
    EXPECT_EQ(published, 0);

    onMain([this] { workspace_->launch({.pid = 99, .bundleID = "com.c", .name = "app 5"}); });
    time_->advance(0.06); // The launch alone has the process classified anew.
    EXPECT_THAT(mixerLines(), Contains("mixer debug: Apps: com.b, com.c, com.a"));
    EXPECT_EQ(published, 1);
}

TEST_F(MixerModelTest, KeepsTheRowOfASilentAppForAWhile)
{
    launch();
    const auto paused = addApp(10, "com.paused", "Paused");
    const auto gone = addApp(11, "com.gone", "Gone");
    const auto goneInput = addProcess(11, false);
    time_->advance(2.0);
    setRunning(goneInput, false, true); // 0.05 s ago was the last snapshot in which they play.
    hardware_->setRunning(paused, false, false);
    hardware_->removeProcess(gone);
    hardware_->removeProcess(goneInput);
    time_->advance(0.1);
    onMain([this] { model_->setVolume(0.3, "com.gone"); });
    addProcess(99, true); // Rebuilds the rows from what was kept.
    ASSERT_TRUE(row("com.gone"));
    EXPECT_FALSE(row("com.gone")->isPlaying || row("com.gone")->isUsingMicrophone);
    EXPECT_EQ(row("com.gone")->settings.volume(), 0.3);
    EXPECT_FALSE(row("com.paused")->isPlaying);

    time_->advance(2.7);
    EXPECT_EQ(model_->apps.get().size(), 2U);
    static_cast<void>(mixerLines());
    time_->advance(0.15);
    EXPECT_THAT(mixerLines(), ElementsAre("mixer debug: Apps: ")); // No snapshot was needed.
    EXPECT_THAT(model_->apps.get(), IsEmpty());
}

TEST_F(MixerModelTest, DeviceSnapshotMovesTapsWithoutRebuildingRows)
{
    launch();
    const auto music = addApp(10, "com.music", "Music");
    hardware_->setOutputDevices(music, std::vector<AudioObjectID>{});
    onMain([this] { model_->setVolume(0.5, "com.music"); });
    time_->advance(0.2);
    static_cast<void>(mixerLines());
    hardware_->setDefaultOutput(headset_);
    time_->advance(0.2);
    EXPECT_EQ(model_->defaultOutputUID.get(), "headset");
    EXPECT_NEAR(heard(music, headset_), 0.5, 1e-3);
    EXPECT_THAT(mixerLines(), IsEmpty());
}

TEST_F(MixerModelTest, TellsWhetherCaptureIsPermitted)
{
    hardware_->setCapturePermitted(false);
    launch();
    addApp(10, "com.music", "Music");
    onMain([this] { model_->setVolume(0.5, "com.music"); });
    time_->advance(3.0);
    EXPECT_TRUE(model_->needsAudioPermission.get());
    hardware_->setCapturePermitted(true);
    time_->advance(60.0);
    EXPECT_FALSE(model_->needsAudioPermission.get());
}

TEST_F(MixerModelTest, LivesWithoutServices)
{
    model_ = MixerModel::create({main_, workspace_, defaults_});
    onMain([this] {
        model_->start();
        model_->setVolume(0.5, "com.music");
        model_->toggleMicrophone();
        model_->setCallModeSettings({false, 0.5, {}});
        EXPECT_EQ(model_->settings("com.music").volume(), 0.5);
        model_->forgetAll();
        EXPECT_EQ(model_->settings("com.music").volume(), 1.0);
    });
    EXPECT_TRUE(model_->microphone.get().isMuted);
    EXPECT_EQ(defaults_->writes(), 0);
}

TEST_F(MixerModelTest, NothingArrivesAfterItsEnd)
{
    launch();
    const auto music = addApp(10, "us.zoom.xos", "Zoom");
    setRunning(music, false, false);
    setRunning(music, false, true); // Both timers are pending now.
    hardware_->setRunning(music, true, true);
    const std::weak_ptr<MixerModel> weak = model_;
    model_.reset();
    EXPECT_TRUE(weak.expired());
    static_cast<void>(mixerLines());
    time_->advance(10.0);
    EXPECT_THAT(mixerLines(), IsEmpty());
}

} // namespace
} // namespace fadewell
