#include "ui/OutputChoice.h"

#include <algorithm>

namespace fadewell {
namespace {

template <class Value>
const OutputDevice*
find(std::span<const OutputDevice> devices, Value OutputDevice::*member, const Value& value)
{
    const auto found = std::ranges::find(devices, value, member);
    return found == devices.end() ? nullptr : &*found;
}

} // namespace

std::string_view symbolName(OutputDevice::Kind kind)
{
    using Kind = OutputDevice::Kind;
    switch (kind) {
    case Kind::macBookSpeakers:
        return "laptopcomputer";
    case Kind::iMacSpeakers:
        return "desktopcomputer";
    case Kind::macMiniSpeakers:
        return "macmini";
    case Kind::macStudioSpeakers:
        return "macstudio";
    case Kind::displaySpeakers:
        return "display";
    case Kind::headphones:
    case Kind::bluetooth:
        return "headphones";
    case Kind::airPods:
        return "airpods";
    case Kind::airPodsPro:
        return "airpods.pro";
    case Kind::airPodsMax:
        return "airpods.max";
    case Kind::beats:
        return "beats.headphones";
    case Kind::tv:
        return "tv";
    case Kind::airPlay:
        return "airplayaudio";
    case Kind::homePod:
        return "homepod";
    case Kind::usb:
        return "hifispeaker";
    case Kind::virtual_:
        return "waveform";
    case Kind::builtInSpeakers:
    case Kind::other:
        break;
    }
    return "speaker.wave.2";
}

const OutputDevice* deviceInUse(std::span<const OutputDevice> devices,
                                const AppAudioSettings& settings,
                                std::optional<std::uint32_t> ownOutputDeviceID,
                                const std::optional<std::string>& defaultOutputUID)
{
    const OutputDevice* device = nullptr;
    if (settings.outputDeviceUID) {
        device = find(devices, &OutputDevice::id, *settings.outputDeviceUID);
    }
    if (device == nullptr && ownOutputDeviceID) {
        device = find(devices, &OutputDevice::objectID, *ownOutputDeviceID);
    }
    if (device == nullptr && defaultOutputUID) {
        device = find(devices, &OutputDevice::id, *defaultOutputUID);
    }
    return device;
}

std::vector<OutputChoice> outputChoices(std::span<const OutputDevice> devices,
                                        const AppAudioSettings& settings)
{
    const auto& selected = settings.outputDeviceUID;
    std::vector<OutputChoice> choices{
        {.uid = {}, .name = {}, .symbol = {}, .isSelected = !selected.has_value()}};
    for (const auto& device : devices) {
        choices.push_back({.uid = device.id,
                           .name = device.name,
                           .symbol = symbolName(device.kind),
                           .isSelected = selected == device.id});
    }
    if (selected && find(devices, &OutputDevice::id, *selected) == nullptr) {
        choices.push_back({.uid = selected,
                           .name = settings.outputDeviceName.value_or(*selected),
                           .symbol = {},
                           .isConnected = false,
                           .isSelected = true});
    }
    return choices;
}

} // namespace fadewell
