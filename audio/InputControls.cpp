#include "audio/InputControls.h"

#include "audio/PropertyReaders.h"

namespace fadewell {
namespace {

constexpr auto muteAddress =
    propertyAddress(kAudioDevicePropertyMute, kAudioObjectPropertyScopeInput);

constexpr AudioObjectPropertyAddress volumeAddress(AudioObjectPropertyElement element)
{
    return propertyAddress(
        kAudioDevicePropertyVolumeScalar, kAudioObjectPropertyScopeInput, element);
}

bool isSettable(AudioHardware& hardware,
                AudioObjectID device,
                const AudioObjectPropertyAddress& address)
{
    bool settable = false;
    return hardware.isSettable(device, address, settable) == kAudioHardwareNoError && settable;
}

} // namespace

bool canUseMuteProperty(AudioHardware& hardware, AudioObjectID device)
{
    return hardware.has(device, muteAddress) && isSettable(hardware, device, muteAddress);
}

void writeMute(AudioHardware& hardware, AudioObjectID device, bool isMuted)
{
    writeProperty<std::uint32_t>(hardware, device, muteAddress, isMuted ? 1 : 0);
}

std::optional<bool> isMuted(AudioHardware& hardware, AudioObjectID device)
{
    const auto state = readProperty<std::uint32_t>(hardware, device, muteAddress);
    return state ? std::optional(*state != 0) : std::nullopt;
}

std::vector<AudioObjectPropertyElement> volumeElements(AudioHardware& hardware,
                                                       AudioObjectID device)
{
    if (hardware.has(device, volumeAddress(kAudioObjectPropertyElementMain))) {
        return {kAudioObjectPropertyElementMain};
    }
    std::vector<AudioObjectPropertyElement> elements;
    for (const AudioObjectPropertyElement channel : {1U, 2U}) {
        if (hardware.has(device, volumeAddress(channel))) {
            elements.push_back(channel);
        }
    }
    return elements;
}

bool hasSettableVolume(AudioHardware& hardware, AudioObjectID device)
{
    const auto elements = volumeElements(hardware, device);
    return !elements.empty() && isSettable(hardware, device, volumeAddress(elements.front()));
}

std::optional<double> currentVolume(AudioHardware& hardware, AudioObjectID device)
{
    const auto elements = volumeElements(hardware, device);
    if (elements.empty()) {
        return std::nullopt;
    }
    return readProperty<float>(hardware, device, volumeAddress(elements.front()));
}

void writeVolume(AudioHardware& hardware, AudioObjectID device, double volume)
{
    for (const auto element : volumeElements(hardware, device)) {
        writeProperty(hardware, device, volumeAddress(element), static_cast<float>(volume));
    }
}

} // namespace fadewell
