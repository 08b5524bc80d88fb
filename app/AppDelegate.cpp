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

void AppDelegate::applicationDidFinishLaunching(const std::function<void()>& installSignalHandlers)
{
    TapManager::removeLeftovers(*hardware_);
    MicrophoneController::restoreLeftMuted(*hardware_, *defaults_);
    installSignalHandlers();
    model_->start();
}

void AppDelegate::applicationWillTerminate()
{
    // Taps first: an app must not stay silent, whatever happens to the microphone.
    if (const auto& taps = model_->taps()) {
        taps->stopAll();
    }
    if (const auto& controller = model_->microphoneController()) {
        controller->releaseMute();
    }
}

} // namespace fadewell
