#include "platform/linux/pipewire/taps/Taps.h"

#include <algorithm>

namespace fadewell::pipewire {
bool Taps::has(AudioObjectID object, const AudioObjectPropertyAddress& address) const
{
    std::optional<std::string> text;
    return property(object, address) || getString(object, address, text) == kAudioHardwareNoError ||
           ((taps_.contains(object) || leftovers_.owns(object)) &&
            address.mSelector == kAudioTapPropertyDescription);
}

OSStatus Taps::dataSize(AudioObjectID object,
                        const AudioObjectPropertyAddress& address,
                        std::uint32_t& size) const
{
    const auto value = property(object, address);
    if (!value) {
        return kAudioHardwareUnknownPropertyError;
    }
    size = static_cast<std::uint32_t>(value->size());
    return kAudioHardwareNoError;
}

OSStatus Taps::getData(AudioObjectID object,
                       const AudioObjectPropertyAddress& address,
                       std::span<std::byte> data,
                       std::uint32_t& used) const
{
    const auto value = property(object, address);
    if (!value) {
        return kAudioHardwareUnknownPropertyError;
    }
    const auto count = std::min(data.size(), value->size());
    std::copy_n(value->begin(), count, data.begin());
    used = static_cast<std::uint32_t>(count);
    return kAudioHardwareNoError;
}

OSStatus Taps::getString(AudioObjectID object,
                         const AudioObjectPropertyAddress& address,
                         std::optional<std::string>& text) const
{
    const auto found = aggregates_.find(object);
    if (found == aggregates_.end()) {
        return kAudioHardwareUnknownPropertyError;
    }
    if (address.mSelector == kAudioDevicePropertyDeviceUID) {
        text = found->second.description.uid;
        return kAudioHardwareNoError;
    }
    if (address.mSelector == kAudioObjectPropertyName) {
        text = found->second.description.name;
        return kAudioHardwareNoError;
    }
    return kAudioHardwareUnknownPropertyError;
}

std::optional<PropertyBytes> Taps::property(AudioObjectID object,
                                            const AudioObjectPropertyAddress& address) const
{
    if (const auto tap = taps_.find(object); tap != taps_.end()) {
        const bool isFormat = address.mSelector == kAudioTapPropertyFormat;
        return isFormat ? std::optional(tapFormat(tap->second)) : std::nullopt;
    }
    const auto aggregate = aggregates_.find(object);
    return aggregate != aggregates_.end() ? aggregateProperty(aggregate->second, address)
                                          : std::nullopt;
}

PropertyBytes Taps::tapFormat(const TapObject& tap) const
{
    AudioStreamBasicDescription format;
    format.mSampleRate = tap.streams ? tap.streams->sampleRate() : devices_.graphRate();
    format.mFormatID = kAudioFormatLinearPCM;
    format.mFormatFlags =
        kAudioFormatFlagIsFloat | kAudioFormatFlagIsPacked | kAudioFormatFlagIsNonInterleaved;
    format.mBytesPerPacket = sizeof(float);
    format.mFramesPerPacket = 1;
    format.mBytesPerFrame = sizeof(float);
    format.mChannelsPerFrame = 2;
    format.mBitsPerChannel = 32;
    return bytesOf(format);
}

std::optional<PropertyBytes>
Taps::aggregateProperty(const AggregateObject& aggregate,
                        const AudioObjectPropertyAddress& address) const
{
    const auto& tap = taps_.at(aggregate.tap);
    switch (address.mSelector) {
    case kAudioDevicePropertyStreams: {
        const bool isReady = tap.streams ? tap.streams->isReady() : !canPlay(tap.output);
        const bool isInput = address.mScope == kAudioObjectPropertyScopeInput;
        // Streams are counted, never addressed: the aggregate's id stands for both.
        return isReady && (!isInput || tap.takesStreams()) ? bytesOf(aggregate.id)
                                                           : PropertyBytes();
    }
    case kAudioDevicePropertyDeviceIsAlive:
        return bytesOf(std::uint32_t{1});
    case kAudioDevicePropertyNominalSampleRate:
        return bytesOf(tap.streams ? tap.streams->sampleRate() : devices_.graphRate());
    case kAudioDevicePropertyTransportType:
        return bytesOf(fourCharCode("grup"));
    case kAudioDevicePropertyIsHidden:
        return bytesOf(std::uint32_t{0});
    default:
        return std::nullopt;
    }
}

} // namespace fadewell::pipewire
