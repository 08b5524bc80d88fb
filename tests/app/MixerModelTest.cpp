#include "tests/app/MixerModelFixture.h"

namespace fadewell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MixerModelTest : public MixerModelFixture {};

TEST_F(MixerModelTest, AppliesWhatIsRememberedWhenAnAppPlays)
{
    workspace_->installed["com.tube"] = {"/apps/tube", "Tube", {"tube", {}}};
    AppSettingsStore(defaults_).set({0.4, false, {}, {}}, "com.music");
    AppSettingsStore(defaults_).set({0.9, true, {}, {}}, "com.tube");
    launch();
    EXPECT_EQ(model_->rememberedApps.get(),
              (std::vector<RememberedApp>{
                  {"com.music", "com.music", AppIcon::generic(), {0.4, false, {}, {}}},
                  {"com.tube", "Tube", {"tube", {}}, {0.9, true, {}, {}}}}));

    const auto music = addApp(10, "com.music", "Music");
    const auto tube = addApp(11, "com.tube", "Tube");
    const auto other = addApp(12, "com.other", "Other");
    EXPECT_NEAR(heard(music, speakers_), 0.4, 1e-3);
    EXPECT_EQ(heard(tube, speakers_), 0);
    EXPECT_EQ(heard(other, speakers_), 1);
    EXPECT_EQ(row("com.music")->ownOutputDeviceID, speakers_);
    EXPECT_EQ(row("com.tube")->settings, AppAudioSettings(0.9, true, {}, {}));
    EXPECT_EQ(model_->outputDeviceName("headset"), "Headset");
    EXPECT_FALSE(model_->outputDeviceName("gone"));
}

TEST_F(MixerModelTest, ShowsRowsByNameAndPublishesOnlyChanges)
{
    launch();
    addApp(10, "com.a", "app 10");
    addApp(11, "com.b", "App 2");
    addApp(12, "com.silent", "Silent", /*isPlaying=*/false);
    addApp(workspace_->pid, "app.own", "Own");
    addProcess(99); // Nobody owns it.
    EXPECT_THAT(shownNames(), ElementsAre("App 2", "app 10"));
    EXPECT_THAT(mixerLines(), testing::Contains("mixer debug: Apps: com.b, com.a"));

    int published = 0;
    const auto observer = model_->apps.observe([&](const auto&) { ++published; });
    addProcess(98);
    EXPECT_THAT(mixerLines(), ElementsAre("mixer debug: Snapshot: 6 processes, 5 playing"));
    EXPECT_EQ(published, 0);
}

TEST_F(MixerModelTest, KeepsTheRowOfASilentAppForAWhile)
{
    launch();
    const auto paused = addApp(10, "com.paused", "Paused");
    const auto gone = addApp(11, "com.gone", "Gone");
    const auto goneInput = addProcess(11, /*isPlaying=*/false);
    time_->advance(2.0);
    setRunning(goneInput, false, true); // 0.05 s ago was the last snapshot in which they play.
    hardware_->setRunning(paused, false, false);
    hardware_->removeProcess(gone);
    hardware_->removeProcess(goneInput);
    time_->advance(0.1);
    onMain([this] { model_->setVolume(0.3, "com.gone"); });
    addProcess(99); // Rebuilds the rows from what was kept.
    ASSERT_TRUE(row("com.gone"));
    EXPECT_FALSE(row("com.gone")->isPlaying || row("com.gone")->isUsingMicrophone);
    EXPECT_EQ(row("com.gone")->name, "Gone");
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
    workspace_->running.push_back({.pid = 10, .bundleID = "com.music", .name = "Music"});
    const auto music = hardware_->addProcess(
        {.pid = 10, .isRunningOutput = true, .outputDevices = std::vector<AudioObjectID>{}});
    onMain([this] { model_->setVolume(0.5, "com.music"); });
    time_->advance(0.2);
    EXPECT_NEAR(heard(music, speakers_), 0.5, 1e-3);
    static_cast<void>(mixerLines());

    hardware_->setDefaultOutput(headset_);
    time_->advance(0.2);
    EXPECT_EQ(model_->defaultOutputUID.get(), "headset");
    EXPECT_EQ(heard(music, speakers_), 0);
    EXPECT_NEAR(heard(music, headset_), 0.5, 1e-3);
    EXPECT_THAT(mixerLines(), IsEmpty());
}

TEST_F(MixerModelTest, LaunchOfAnApplicationClassifiesAnew)
{
    launch();
    addProcess(10);
    EXPECT_THAT(shownNames(), IsEmpty());
    onMain([this] { workspace_->launch({.pid = 10, .bundleID = "com.late", .name = "Late"}); });
    time_->advance(0.06);
    EXPECT_THAT(shownNames(), ElementsAre("Late"));
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
    model_ =
        MixerModel::create({.mainQueue = main_, .workspace = workspace_, .defaults = defaults_});
    onMain([this] {
        model_->start();
        model_->setVolume(0.5, "com.music");
        model_->toggleMicrophone();
        model_->setCallModeSettings({false, 0.5, {}});
        model_->setCallModeActive(true);
        EXPECT_EQ(model_->settings("com.music").volume(), 0.5);
        model_->forgetAll();
        EXPECT_EQ(model_->settings("com.music").volume(), 1.0);
    });
    EXPECT_TRUE(model_->microphone.get().isMuted);
    EXPECT_TRUE(model_->isCallModeActive.get());
    EXPECT_EQ(defaults_->writes(), 0);
    EXPECT_EQ(time_->pendingTasks(), 1U); // The sound system's own cycles.
}

TEST_F(MixerModelTest, NothingArrivesAfterItsEnd)
{
    launch();
    const auto music = addApp(10, "com.music", "Music");
    setRunning(music, false, true); // Both timers are pending now.
    const std::weak_ptr<MixerModel> weak = model_;
    hardware_->setRunning(music, true, true);
    model_.reset();
    EXPECT_TRUE(weak.expired());
    static_cast<void>(mixerLines());
    time_->advance(10.0);
    EXPECT_THAT(mixerLines(), IsEmpty());
}

} // namespace
} // namespace fadewell
