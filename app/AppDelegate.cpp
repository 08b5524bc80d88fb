#include "app/AppDelegate.h"

#include <utility>

namespace fadewell {

AppDelegate::AppDelegate(std::shared_ptr<MixerModel> model,
                         std::shared_ptr<AudioHardware> hardware,
                         std::shared_ptr<UserDefaults> defaults)
    : model_(std::move(model))
    , hardware_(std::move(hardware))
    , defaults_(std::move(defaults))
{}

void AppDelegate::setWindows(std::shared_ptr<AppWindows> windows)
{
    windows_ = std::move(windows);
}

void AppDelegate::applicationDidFinishLaunching(const std::function<void()>& installSignalHandlers)
{
    TapManager::removeLeftovers(*hardware_);
    MicrophoneController::restoreLeftMuted(*hardware_, *defaults_);
    installSignalHandlers();
    model_->start();
    if (shortcuts_) {
        AppShortcuts::registerActions(*shortcuts_, model_, translate_);
    }
    if (windows_ && !defaults_->get<bool>("hasCompletedOnboarding").value_or(false)) {
        windows_->show(AppWindow::onboarding);
    }
}

void AppDelegate::setShortcuts(std::shared_ptr<shortcuts::KeyboardShortcuts> shortcuts,
                               AppShortcuts::Translate translate)
{
    shortcuts_ = std::move(shortcuts);
    translate_ = std::move(translate);
}

void AppDelegate::applicationShouldHandleReopen()
{
    if (windows_) {
        const bool hasSettings = windows_->offers(AppWindow::settings);
        windows_->show(hasSettings ? AppWindow::settings : AppWindow::panel);
    }
}

void AppDelegate::applicationWillTerminate()
{
    // Taps first: an app must not stay silent, whatever happens to the microphone.
    model_->stop();
    if (const auto& controller = model_->microphoneController()) {
        controller->releaseMute();
    }
}

} // namespace fadewell
