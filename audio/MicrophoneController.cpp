#include "audio/MicrophoneController.h"

#include "audio/InputControls.h"
#include "audio/PropertyReaders.h"
#include "audio/WeakTask.h"

#include <utility>

namespace fadewell {
namespace {

constexpr double mutedBySwitch = -1.0;

UserDefaults::NumberMap mutedDevices(const UserDefaults& defaults)
{
    return defaults.get<UserDefaults::NumberMap>(MicrophoneController::mutedInputDevicesKey)
        .value_or(UserDefaults::NumberMap());
}

/// On disk before anything else happens: it is what undoes a mute after a crash.
void storeMutedDevices(UserDefaults& defaults, const UserDefaults::NumberMap& devices)
{
    if (devices.empty()) {
        defaults.remove(MicrophoneController::mutedInputDevicesKey);
    } else {
        defaults.set(MicrophoneController::mutedInputDevicesKey, devices);
    }
    defaults.flush();
}

/// Undoes a mute by what was remembered of it.
void undoMute(AudioHardware& hardware, AudioObjectID device, double remembered)
{
    if (remembered < 0) {
        writeMute(hardware, device, false);
    } else if (remembered >= 0) {
        writeVolume(hardware, device, remembered);
    }
}

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
            controller.muteDevice(controller.device_);
        } else {
            controller.unmuteDevice(controller.device_);
        }
        controller.publishState();
    }));
}

void MicrophoneController::setVolume(double volume)
{
    queue_->async(weakTask(this, [volume](MicrophoneController& controller) {
        controller.queue_->assertCurrent();
        if (std::exchange(controller.wantsMute_, false)) {
            controller.unmuteDevice(controller.device_);
        }
        writeVolume(*controller.context_.hardware, controller.device_, clampedVolume(volume));
        controller.publishState();
    }));
}

void MicrophoneController::releaseMute()
{
    queue_->sync([this] {
        queue_->assertCurrent();
        unmuteDevice(device_);
        wantsMute_ = false;
        restoreLeftMuted(*context_.hardware, *defaults_);
    });
}

void MicrophoneController::restoreLeftMuted(AudioHardware& hardware, UserDefaults& defaults)
{
    const auto devices = mutedDevices(defaults);
    if (devices.empty()) {
        return;
    }
    for (const auto& [uid, remembered] : devices) {
        if (const auto device = deviceID(hardware, uid)) {
            undoMute(hardware, *device, remembered);
        }
    }
    storeMutedDevices(defaults, {});
    Logger("microphone").notice("Unmuted {} microphone(s) left muted", devices.size());
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
        unmuteDevice(device_);
    }
    device_ = input;
    if (wantsMute_) {
        muteDevice(device_);
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
                                        controller.publishState();
                                    }));
            if (listener) {
                deviceListeners_.push_back(std::move(listener));
            }
        }
    }
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
    std::optional<double> saved;
    if (const auto uid = uidOf(device_)) {
        const auto devices = mutedDevices(*defaults_);
        const auto found = devices.find(*uid);
        saved = found == devices.end() ? std::nullopt : std::optional(found->second);
    }
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

void MicrophoneController::muteDevice(AudioObjectID device)
{
    const auto uid = uidOf(device);
    auto devices = mutedDevices(*defaults_);
    if (!uid || devices.contains(*uid)) {
        return; // What is remembered of a muted device must not be overwritten.
    }
    if (const auto remembered = silence(device)) {
        devices[*uid] = *remembered;
        storeMutedDevices(*defaults_, devices);
    }
}

std::optional<double> MicrophoneController::silence(AudioObjectID device)
{
    AudioHardware& hardware = *context_.hardware;
    if (canUseMuteProperty(hardware, device)) {
        writeMute(hardware, device, true);
        return mutedBySwitch;
    }
    const auto volume = currentVolume(hardware, device);
    if (!volume || !hasSettableVolume(hardware, device)) {
        log_.notice("The input device can't be muted");
        return std::nullopt;
    }
    writeVolume(hardware, device, 0);
    return volume;
}

void MicrophoneController::unmuteDevice(AudioObjectID device)
{
    const auto uid = uidOf(device);
    auto devices = mutedDevices(*defaults_);
    const auto found = uid ? devices.find(*uid) : devices.end();
    if (found == devices.end()) {
        return;
    }
    undoMute(*context_.hardware, device, found->second);
    devices.erase(found);
    storeMutedDevices(*defaults_, devices);
}

std::optional<std::string> MicrophoneController::uidOf(AudioObjectID device) const
{
    if (device == kAudioObjectUnknown) {
        return std::nullopt;
    }
    return stringProperty(*context_.hardware, device, kAudioDevicePropertyDeviceUID);
}

} // namespace fadewell
