#include "app/AppDelegate.h"

#include "tests/app/MixerModelFixture.h"

namespace fadewell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AppDelegateTest : public MixerModelFixture {};

TEST_F(AppDelegateTest, CleansUpAfterAnEarlierRunBeforeItStarts)
{
    auto left = TapDescription::stereoMixdownOfProcesses({});
    left.name = "Fadewell com.music";
    left.isPrivate = true;
    hardware_->plantTap(left);
    hardware_->setInputVolume(microphone_, 0, 0);
    defaults_->set(MicrophoneController::mutedInputDevicesKey,
                   UserDefaults::NumberMap{{"mic", 0.5}});
    createModel();
    AppDelegate delegate(model_, hardware_, defaults_);
    time_->run();
    bool isInstalled = false;
    onMain([&] {
        delegate.applicationDidFinishLaunching([&] {
            isInstalled = true;
            EXPECT_THAT(taps(), IsEmpty());
            EXPECT_EQ(microphoneVolume(), 0.5F);
            EXPECT_THAT(defaults_->keys(), IsEmpty());
            EXPECT_EQ(hardware_->made().listeners, 0U);
        });
    });
    EXPECT_TRUE(isInstalled);
    EXPECT_GT(hardware_->made().listeners, 0U);
}

TEST_F(AppDelegateTest, LeavesTheSoundSystemCleanTapsFirst)
{
    launch();
    AppDelegate delegate(model_, hardware_, defaults_);
    const auto music = addApp(10, "com.music", "Music");
    onMain([this] {
        model_->setVolume(0.5, "com.music");
        model_->toggleMicrophone();
    });
    EXPECT_EQ(taps().size(), 1U);
    EXPECT_EQ(microphoneVolume(), 0.0F);
    hardware_->calls().clear();
    onMain([&] { delegate.applicationWillTerminate(); });
    EXPECT_THAT(
        hardware_->calls().changes(),
        ElementsAre(
            "stop", "destroyIOProc", "destroyAggregateDevice", "destroyProcessTap", "setData"));
    EXPECT_EQ(microphoneVolume(), 0.8F);
    EXPECT_EQ(heard(music, speakers_), 1);
}

} // namespace
} // namespace fadewell
