#include "app/AppDelegate.h"

#include "platform/simulated/SimulatedHotKeyService.h"
#include "shortcuts/Modifiers.h"
#include "tests/app/MixerModelFixture.h"
#include "tests/support/FixedWindows.h"

namespace fadewell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AppDelegateTest : public MixerModelFixture {
protected:
    std::shared_ptr<SimulatedHotKeyService> keys_ = std::make_shared<SimulatedHotKeyService>();
};

TEST_F(AppDelegateTest, ItsFourShortcutsActOnTheModelWhileItLives)
{
    using shortcuts::Shortcut;
    launch();
    addApp(10, "com.music", "Music");
    workspace_->front = {.pid = 10, .bundleID = "com.music", .name = "Music"};
    AppDelegate delegate(model_, hardware_, defaults_);
    std::shared_ptr<shortcuts::KeyboardShortcuts> keyboard;
    const auto give = [&](const char* name, std::int64_t key) {
        const Shortcut shortcut{key, shortcuts::classic::control};
        keyboard->storeShortcut(shortcut, {name});
        return shortcut;
    };
    onMain([&] {
        keyboard = shortcuts::KeyboardShortcuts::create(main_, defaults_, keys_);
        delegate.setShortcuts(keyboard);
        delegate.applicationDidFinishLaunching([] {});
        EXPECT_THAT(keys_->registered(), IsEmpty()); // Until the user wants them.
        const auto microphone = give("toggleMicrophone", 1);
        const auto calls = give("toggleCallMode", 2);
        const auto raise = give("raiseFrontmostApp", 3);
        const auto lower = give("lowerFrontmostApp", 4);

        keys_->press(lower);
        keys_->release(lower);
        keys_->press(lower);
        keys_->press(raise);
        EXPECT_NEAR(model_->settings("com.music").volume(), 0.9, 1e-9);
        keys_->press(microphone);
        keys_->press(calls);
        EXPECT_FALSE(model_->microphone.get().isMuted || model_->isCallModeActive.get());
        keys_->release(microphone);
        keys_->release(calls);
        EXPECT_TRUE(model_->microphone.get().isMuted && model_->isCallModeActive.get());
    });
    onMain([&] {
        delegate.setShortcuts(nullptr);
        keyboard.reset();
    });
}

TEST_F(AppDelegateTest, ADesktopThatAssignsShortcutsShowsThemInTheUsersLanguage)
{
    launch();
    AppDelegate delegate(model_, hardware_, defaults_);
    keys_->offered = shortcuts::HotKeyService::Support::portal;
    onMain([&] {
        delegate.setShortcuts(shortcuts::KeyboardShortcuts::create(main_, defaults_, keys_),
                              [](const char* title) { return "«" + std::string(title) + "»"; });
        delegate.applicationDidFinishLaunching([] {});
        ASSERT_EQ(keys_->bound.size(), 4U);
        EXPECT_EQ(keys_->bound[3].id, "lowerFrontmostApp");
        EXPECT_EQ(keys_->bound[3].description, "«Turn Down the App in Front»");
        delegate.setShortcuts(nullptr);
    });
}

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

TEST_F(AppDelegateTest, GreetsWhoIsNewAndReopensToTheSettingsThatThereAre)
{
    createModel();
    const auto windows = std::make_shared<FixedWindows>();
    const auto launchWith = [&](bool hasCompleted) {
        AppDelegate delegate(model_, hardware_, defaults_);
        delegate.setWindows(windows);
        defaults_->set("hasCompletedOnboarding", hasCompleted);
        windows->shown.clear();
        onMain([&] { delegate.applicationDidFinishLaunching([] {}); });
        return windows->shown;
    };
    EXPECT_THAT(launchWith(false), ElementsAre(AppWindow::onboarding));
    EXPECT_THAT(launchWith(true), IsEmpty());

    AppDelegate delegate(model_, hardware_, defaults_);
    delegate.applicationShouldHandleReopen(); // Without a display nothing opens.
    delegate.setWindows(windows);
    delegate.applicationShouldHandleReopen();
    windows->offered.push_back(AppWindow::settings);
    delegate.applicationShouldHandleReopen();
    EXPECT_THAT(windows->shown, ElementsAre(AppWindow::panel, AppWindow::settings));
}

} // namespace
} // namespace fadewell
