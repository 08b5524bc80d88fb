#include "audio/InputMutes.h"

#include "audio/InputControls.h"
#include "audio/MicrophoneController.h"
#include "audio/PropertyReaders.h"

namespace fadewell {
namespace {

constexpr double mutedBySwitch = -1.0;

} // namespace

InputMutes::InputMutes(AudioHardware& hardware, UserDefaults& defaults)
    : hardware_(hardware)
    , defaults_(defaults)
{}

bool InputMutes::mute(AudioObjectID device)
{
    const auto uid = uidOf(device);
    auto devices = load();
    if (!uid || devices.contains(*uid)) {
        return true; // What is remembered of a muted device must not be overwritten.
    }
    const auto remembered = silence(device);
    if (!remembered) {
        return false;
    }
    devices[*uid] = *remembered;
    store(devices);
    return true;
}

std::optional<double> InputMutes::silence(AudioObjectID device)
{
    if (canUseMuteProperty(hardware_, device)) {
        writeMute(hardware_, device, /*isMuted=*/true);
        return mutedBySwitch;
    }
    const auto volume = currentVolume(hardware_, device);
    if (!volume || !hasSettableVolume(hardware_, device)) {
        return std::nullopt;
    }
    writeVolume(hardware_, device, 0);
    return volume;
}

void InputMutes::unmute(AudioObjectID device)
{
    if (const auto remembered = this->remembered(device)) {
        undo(device, *remembered);
        abandon(device);
    }
}

bool InputMutes::isUndone(AudioObjectID device) const
{
    const auto remembered = this->remembered(device);
    if (!remembered) {
        return false;
    }
    return *remembered < 0 ? isMuted(hardware_, device) == false
                           : currentVolume(hardware_, device).value_or(0) > 0;
}

void InputMutes::repeat(AudioObjectID device)
{
    if (const auto remembered = this->remembered(device); remembered && *remembered < 0) {
        writeMute(hardware_, device, /*isMuted=*/true);
    } else if (remembered) {
        writeVolume(hardware_, device, 0);
    }
}

void InputMutes::abandon(AudioObjectID device)
{
    auto devices = load();
    if (const auto uid = uidOf(device); uid && devices.erase(*uid) > 0) {
        store(devices);
    }
}

std::size_t InputMutes::undoAll()
{
    const auto devices = load();
    if (devices.empty()) {
        return 0;
    }
    for (const auto& [uid, remembered] : devices) {
        if (const auto device = deviceID(hardware_, uid)) {
            undo(*device, remembered);
        }
    }
    store({});
    return devices.size();
}

void InputMutes::undo(AudioObjectID device, double remembered)
{
    if (remembered < 0) {
        writeMute(hardware_, device, /*isMuted=*/false);
    } else if (remembered >= 0) {
        writeVolume(hardware_, device, remembered);
    }
}

std::optional<double> InputMutes::remembered(AudioObjectID device) const
{
    const auto uid = uidOf(device);
    const auto devices = load();
    const auto found = uid ? devices.find(*uid) : devices.end();
    return found == devices.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::string> InputMutes::uidOf(AudioObjectID device) const
{
    if (device == kAudioObjectUnknown) {
        return std::nullopt;
    }
    return stringProperty(hardware_, device, kAudioDevicePropertyDeviceUID);
}

UserDefaults::NumberMap InputMutes::load() const
{
    return defaults_.get<UserDefaults::NumberMap>(MicrophoneController::mutedInputDevicesKey)
        .value_or(UserDefaults::NumberMap());
}

void InputMutes::store(const UserDefaults::NumberMap& devices)
{
    if (devices.empty()) {
        defaults_.remove(MicrophoneController::mutedInputDevicesKey);
    } else {
        defaults_.set(MicrophoneController::mutedInputDevicesKey, devices);
    }
    defaults_.flush();
}

} // namespace fadewell
