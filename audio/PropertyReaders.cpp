#include "audio/PropertyReaders.h"

#include <algorithm>
#include <cstddef>

namespace fadewell {
namespace {

std::optional<AudioObjectID> unlessUnknown(std::optional<AudioObjectID> id)
{
    return id == kAudioObjectUnknown ? std::nullopt : id;
}

} // namespace

std::vector<AudioObjectID> objectIDs(AudioHardware& hardware,
                                     AudioObjectID object,
                                     AudioObjectPropertySelector selector,
                                     AudioObjectPropertyScope scope)
{
    const auto address = propertyAddress(selector, scope);
    std::uint32_t size = 0;
    if (hardware.dataSize(object, address, size) != kAudioHardwareNoError || size == 0) {
        return {};
    }
    std::vector<AudioObjectID> ids(size / sizeof(AudioObjectID));
    std::uint32_t used = 0;
    if (hardware.getData(object, address, std::as_writable_bytes(std::span(ids)), used) !=
        kAudioHardwareNoError)
    {
        return {};
    }
    // The list may have become shorter since its size was asked for.
    ids.resize(std::min<std::size_t>(ids.size(), used / sizeof(AudioObjectID)));
    return ids;
}

std::optional<std::string> stringProperty(AudioHardware& hardware,
                                          AudioObjectID object,
                                          AudioObjectPropertySelector selector,
                                          AudioObjectPropertyScope scope)
{
    std::optional<std::string> text;
    const OSStatus status = hardware.getString(object, propertyAddress(selector, scope), text);
    if (status != kAudioHardwareNoError || !text || text->empty()) {
        return std::nullopt;
    }
    return text;
}

std::optional<std::uint32_t> uint32Property(AudioHardware& hardware,
                                            AudioObjectID object,
                                            AudioObjectPropertySelector selector,
                                            AudioObjectPropertyScope scope,
                                            AudioObjectPropertyElement element)
{
    return readProperty<std::uint32_t>(hardware, object, propertyAddress(selector, scope, element));
}

std::optional<AudioObjectID> defaultOutputDevice(AudioHardware& hardware)
{
    return unlessUnknown(uint32Property(
        hardware, kAudioObjectSystemObject, kAudioHardwarePropertyDefaultOutputDevice));
}

std::optional<AudioObjectID> deviceID(AudioHardware& hardware, std::string_view uid)
{
    AudioObjectID device = kAudioObjectUnknown;
    if (hardware.deviceForUID(uid, device) != kAudioHardwareNoError) {
        return std::nullopt;
    }
    return unlessUnknown(device);
}

} // namespace fadewell
