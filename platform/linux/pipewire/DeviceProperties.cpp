#include "platform/linux/pipewire/DeviceTable.h"

#include <algorithm>
#include <cmath>

namespace fadewell::pipewire {

namespace {

/// The scale that people see is the cube root of the gain.
float shownVolume(const std::vector<float>& channels)
{
    const float loudest = *std::max_element(channels.begin(), channels.end());
    return std::clamp(std::cbrt(loudest), 0.0F, 1.0F);
}

bool isMain(const AudioObjectPropertyAddress& address)
{
    return address.mElement == kAudioObjectPropertyElementMain;
}

bool isInput(const AudioObjectPropertyAddress& address)
{
    return isMain(address) && address.mScope == kAudioObjectPropertyScopeInput;
}

} // namespace

std::optional<std::string> DeviceTable::nodeNameForDevice(AudioObjectID device) const
{
    const Device* const found = alive(device);
    return found == nullptr ? std::nullopt : std::optional(found->uid);
}

std::optional<AudioObjectID> DeviceTable::deviceForNodeName(std::string_view name) const
{
    const auto found = std::find_if(order_.begin(), order_.end(), [&](AudioObjectID device) {
        return devices_.at(device).uid == name;
    });
    return found == order_.end() ? std::nullopt : std::optional(*found);
}

std::optional<AudioObjectID> DeviceTable::deviceForTarget(const std::string& target) const
{
    const auto serial = number(target);
    if (!serial) {
        return deviceForNodeName(target);
    }
    const auto found = std::find_if(order_.begin(), order_.end(), [&](AudioObjectID device) {
        return devices_.at(device).serial == *serial;
    });
    return found == order_.end() ? std::nullopt : std::optional(*found);
}

std::optional<std::uint32_t> DeviceTable::nodeForDevice(AudioObjectID device) const
{
    const Device* const found = alive(device);
    return found == nullptr || found->frozenUntil ? std::nullopt : std::optional(found->node);
}

const DeviceTable::Device* DeviceTable::alive(AudioObjectID device) const
{
    const auto found = devices_.find(device);
    return found != devices_.end() && found->second.isAlive ? &found->second : nullptr;
}

std::optional<PropertyBytes> DeviceTable::value(AudioObjectID object,
                                                const AudioObjectPropertyAddress& address) const
{
    const Device* const device = alive(object);
    if (address.mSelector == kAudioDevicePropertyDeviceIsAlive) {
        return bytesOf(std::uint32_t{device != nullptr});
    }
    if (device == nullptr) {
        return std::nullopt;
    }
    switch (address.mSelector) {
    case kAudioDevicePropertyStreams:
        return bytesOf(streams(*device, address.mScope));
    case kAudioDevicePropertyIsHidden:
        return bytesOf(std::uint32_t{0});
    case kAudioDevicePropertyTransportType:
        return bytesOf(device->transport);
    case kAudioDevicePropertyNominalSampleRate:
        return bytesOf(device->rate);
    case kAudioDevicePropertyDataSource:
        return device->dataSource && address.mScope == kAudioObjectPropertyScopeOutput
                   ? std::optional(bytesOf(*device->dataSource))
                   : std::nullopt;
    default:
        return inputValue(*device, address);
    }
}

std::vector<AudioObjectID> DeviceTable::streams(const Device& device,
                                                AudioObjectPropertyScope scope)
{
    std::vector<AudioObjectID> streams;
    if (scope != kAudioObjectPropertyScopeInput) {
        streams = device.outputStreams;
    }
    if (scope != kAudioObjectPropertyScopeOutput) {
        streams.insert(streams.end(), device.inputStreams.begin(), device.inputStreams.end());
    }
    return streams;
}

std::optional<PropertyBytes> DeviceTable::inputValue(const Device& device,
                                                     const AudioObjectPropertyAddress& address)
{
    if (!isInput(address) || device.inputStreams.empty()) {
        return std::nullopt;
    }
    if (address.mSelector == kAudioDevicePropertyVolumeScalar && !device.volume.channels.empty()) {
        return bytesOf(shownVolume(device.volume.channels));
    }
    if (address.mSelector == kAudioDevicePropertyMute && device.volume.hasMute) {
        return bytesOf(std::uint32_t{device.volume.isMuted});
    }
    return std::nullopt;
}

std::optional<std::string> DeviceTable::text(AudioObjectID object,
                                             AudioObjectPropertySelector selector) const
{
    const auto found = devices_.find(object);
    if (found == devices_.end()) {
        return std::nullopt;
    }
    if (selector == kAudioDevicePropertyDeviceUID) {
        return found->second.uid;
    }
    return selector == kAudioObjectPropertyName ? std::optional(found->second.name) : std::nullopt;
}

bool DeviceTable::isSettable(AudioObjectID object, const AudioObjectPropertyAddress& address) const
{
    const Device* const device = alive(object);
    return device != nullptr && device->isWritable && inputValue(*device, address);
}

OSStatus DeviceTable::set(AudioObjectID object,
                          const AudioObjectPropertyAddress& address,
                          std::span<const std::byte> data)
{
    if (!isSettable(object, address) && !takesLater(object)) {
        return kAudioHardwareIllegalOperationError;
    }
    NodeVolume wanted;
    const OSStatus status = parse(devices_.at(object), address.mSelector, data, wanted);
    return status == kAudioHardwareNoError ? apply(object, wanted) : status;
}

OSStatus DeviceTable::parse(const Device& device,
                            AudioObjectPropertySelector selector,
                            std::span<const std::byte> data,
                            NodeVolume& wanted)
{
    if (selector == kAudioDevicePropertyMute) {
        std::uint32_t isMuted = 0;
        if (!readBytes(data, isMuted)) {
            return kAudioHardwareBadPropertySizeError;
        }
        wanted.isMuted = isMuted != 0;
        wanted.hasMute = true;
        return kAudioHardwareNoError;
    }
    float shown = 0;
    if (!readBytes(data, shown)) {
        return kAudioHardwareBadPropertySizeError;
    }
    if (!std::isfinite(shown)) {
        return kAudioHardwareIllegalOperationError;
    }
    shown = std::clamp(shown, 0.0F, 1.0F);
    wanted.channels.assign(device.volume.channels.size(), shown * shown * shown);
    return kAudioHardwareNoError;
}

OSStatus DeviceTable::apply(AudioObjectID object, const NodeVolume& wanted)
{
    Device& device = devices_.at(object);
    if (device.isAlive && !device.frozenUntil) {
        if (write(object, device.node, wanted) < 0) {
            return kAudioHardwareUnspecifiedError;
        }
        remember(object, wanted);
        return kAudioHardwareNoError;
    }
    remember(object, wanted);
    const Device before = device;
    device.volume = device.volume.with(wanted);
    announce(object, before, device);
    return kAudioHardwareNoError;
}

int DeviceTable::write(AudioObjectID object, std::uint32_t nodeID, const NodeVolume& wanted)
{
    const GraphNode& node = *graph_.node(nodeID);
    int sent = 0;
    // The card's own control where there is one.
    if (const GraphRoute* const route = routeOf(node, false)) {
        GraphRoute changed = *route;
        changed.isSaved = written_[object].keeping.isToBeSaved(route->isSaved, wanted);
        const auto card = number(node.props, PW_KEY_DEVICE_ID).value_or(SPA_ID_INVALID);
        sent = graph_.setDeviceRoute(static_cast<std::uint32_t>(card), changed, wanted);
    } else {
        sent = graph_.setNodeVolume(nodeID, wanted);
    }
    if (sent >= 0) {
        graph_.assumeVolume(nodeID, wanted);
    }
    return sent;
}

} // namespace fadewell::pipewire
