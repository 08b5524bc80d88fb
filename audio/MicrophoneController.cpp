#include "audio/MicrophoneController.h"

#include "audio/InputControls.h"
#include "audio/PropertyReaders.h"
#include "audio/WeakTask.h"

#include <utility>

namespace fadewell {
namespace {

/// Who undoes a mute more often than this in so many seconds, means it.
constexpr double fightWindow = 10.0;
constexpr std::size_t fightLimit = 3;

double clampedVolume(double volume)
{
    if (volume > 1) {
        return 1;
    }
    return volume > 0 ? volume : 0;
}

} // namespace

std::shared_ptr<MicrophoneController>
MicrophoneController::create(EngineContext context, std::shared_ptr<UserDefaults> defaults)
{
    return std::shared_ptr<MicrophoneController>(
        new MicrophoneController(std::move(context), std::move(defaults)));
}

MicrophoneController::MicrophoneController(EngineContext context,
                                           std::shared_ptr<UserDefaults> defaults)
    : context_(std::move(context))
    , defaults_(std::move(defaults))
    , mutes_(*context_.hardware, *defaults_)
    , queue_(context_.makeQueue("app.fadewell.microphone"))
{}

MicrophoneController::~MicrophoneController() = default;

Stream<MicrophoneState>& MicrophoneController::states()
{
    return states_;
}

void MicrophoneController::start()
{
    queue_->async(weakTask(this, [](MicrophoneController& controller) {
        controller.queue_->assertCurrent();
        controller.startOnQueue();
    }));
}

void MicrophoneController::setMuted(bool muted)
{
    queue_->async(weakTask(this, [muted](MicrophoneController& controller) {
        controller.queue_->assertCurrent();
        controller.wantsMute_ = muted;
        if (muted) {
            controller.muteDevice();
        } else {
            controller.mutes_.unmute(controller.device_);
        }
        controller.publishState();
    }));
}

void MicrophoneController::setVolume(double volume)
{
    queue_->async(weakTask(this, [volume](MicrophoneController& controller) {
        controller.queue_->assertCurrent();
        if (std::exchange(controller.wantsMute_, false)) {
            controller.mutes_.unmute(controller.device_);
        }
        writeVolume(*controller.context_.hardware, controller.device_, clampedVolume(volume));
        controller.publishState();
    }));
}

void MicrophoneController::releaseMute()
{
    queue_->sync([this] {
        queue_->assertCurrent();
        mutes_.unmute(device_);
        wantsMute_ = false;
        restoreLeftMuted(*context_.hardware, *defaults_);
    });
}

void MicrophoneController::restoreLeftMuted(AudioHardware& hardware, UserDefaults& defaults)
{
    if (const auto count = InputMutes(hardware, defaults).undoAll(); count > 0) {
        Logger("microphone").notice("Unmuted {} microphone(s) left muted", count);
    }
}

void MicrophoneController::startOnQueue()
{
    if (systemListener_) {
        return;
    }
    systemListener_ = HALListener::create(context_.hardware,
                                          kAudioObjectSystemObject,
                                          propertyAddress(kAudioHardwarePropertyDefaultInputDevice),
                                          queue_,
                                          weakTask(this, [](MicrophoneController& controller) {
                                              controller.queue_->assertCurrent();
                                              controller.attachDefaultInput();
                                          }));
    attachDefaultInput();
}

void MicrophoneController::attachDefaultInput()
{
    const AudioObjectID input = uint32Property(*context_.hardware,
                                               kAudioObjectSystemObject,
                                               kAudioHardwarePropertyDefaultInputDevice)
                                    .value_or(kAudioObjectUnknown);
    if (input == device_) {
        return;
    }
    if (wantsMute_) {
        mutes_.unmute(device_);
    }
    device_ = input;
    if (wantsMute_) {
        muteDevice();
    }
    deviceListeners_.clear();
    if (device_ != kAudioObjectUnknown) {
        listenToDevice();
    }
    publishState();
}

void MicrophoneController::listenToDevice()
{
    for (const auto selector : {kAudioDevicePropertyVolumeScalar, kAudioDevicePropertyMute}) {
        for (const AudioObjectPropertyElement element : {0U, 1U, 2U}) {
            auto listener =
                HALListener::create(context_.hardware,
                                    device_,
                                    {selector, kAudioObjectPropertyScopeInput, element},
                                    queue_,
                                    weakTask(this, [](MicrophoneController& controller) {
                                        controller.queue_->assertCurrent();
                                        controller.handleDeviceChange();
                                    }));
            if (listener) {
                deviceListeners_.push_back(std::move(listener));
            }
        }
    }
}

void MicrophoneController::handleDeviceChange()
{
    if (wantsMute_) {
        keepMuted();
    }
    publishState();
}

void MicrophoneController::keepMuted()
{
    if (!mutes_.isUndone(device_)) {
        // A device may tell only after it became the default what can be done to it.
        static_cast<void>(mutes_.mute(device_));
        return;
    }
    const double now = context_.clock->uptime();
    std::erase_if(undone_, [now](double time) { return now - time >= fightWindow; });
    if (undone_.size() < fightLimit) {
        undone_.push_back(now);
        log_.info("Another program turned the microphone on; muting it again");
        mutes_.repeat(device_);
        return;
    }
    log_.notice("Another program keeps turning the microphone on; leaving it on");
    undone_.clear();
    wantsMute_ = false;
    mutes_.abandon(device_);
}

void MicrophoneController::publishState()
{
    auto state = makeState();
    if (last_ != state) {
        last_ = state;
        states_.send(std::move(state));
    }
}

MicrophoneState MicrophoneController::makeState() const
{
    if (device_ == kAudioObjectUnknown) {
        return {};
    }
    AudioHardware& hardware = *context_.hardware;
    const auto saved = mutes_.remembered(device_);
    const bool isVolumeSettable = hasSettableVolume(hardware, device_);
    MicrophoneState state;
    state.deviceName = stringProperty(hardware, device_, kAudioObjectPropertyName);
    state.canMute = canUseMuteProperty(hardware, device_) || isVolumeSettable;
    state.isMuted = saved.has_value();
    if (isVolumeSettable) {
        // Muted by volume, the real one reads 0: the user still sees what it goes back to.
        state.volume = saved && *saved >= 0 ? saved : currentVolume(hardware, device_);
    }
    return state;
}

void MicrophoneController::muteDevice()
{
    if (!mutes_.mute(device_)) {
        log_.notice("The input device can't be muted");
    }
}

} // namespace fadewell
