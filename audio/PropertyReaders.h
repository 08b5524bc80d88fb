#pragma once

#include "audio/AudioHardware.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace fadewell {

// Property access for all of the engine. Readers never throw: a failed call gives an empty or
// absent value. [any thread]

/// A property's address; global and on the main element unless told otherwise.
[[nodiscard]] constexpr AudioObjectPropertyAddress
propertyAddress(AudioObjectPropertySelector selector,
                AudioObjectPropertyScope scope = kAudioObjectPropertyScopeGlobal,
                AudioObjectPropertyElement element = kAudioObjectPropertyElementMain)
{
    return {selector, scope, element};
}

/// Reads a value of a fixed size.
template <class T>
[[nodiscard]] std::optional<T> readProperty(AudioHardware& hardware,
                                            AudioObjectID object,
                                            const AudioObjectPropertyAddress& address)
{
    static_assert(std::is_trivially_copyable_v<T>);
    T value{};
    std::uint32_t used = 0;
    const OSStatus status =
        hardware.getData(object, address, std::as_writable_bytes(std::span(&value, 1)), used);
    return status == kAudioHardwareNoError ? std::optional(value) : std::nullopt;
}

/// Writes a value with its own size.
template <class T>
OSStatus writeProperty(AudioHardware& hardware,
                       AudioObjectID object,
                       const AudioObjectPropertyAddress& address,
                       const T& value)
{
    static_assert(std::is_trivially_copyable_v<T>);
    return hardware.setData(object, address, std::as_bytes(std::span(&value, 1)));
}

/// A list of objects, in the platform's order.
[[nodiscard]] std::vector<AudioObjectID>
objectIDs(AudioHardware& hardware,
          AudioObjectID object,
          AudioObjectPropertySelector selector,
          AudioObjectPropertyScope scope = kAudioObjectPropertyScopeGlobal);

/// A text; never an empty one.
[[nodiscard]] std::optional<std::string>
stringProperty(AudioHardware& hardware,
               AudioObjectID object,
               AudioObjectPropertySelector selector,
               AudioObjectPropertyScope scope = kAudioObjectPropertyScopeGlobal);

[[nodiscard]] std::optional<std::uint32_t>
uint32Property(AudioHardware& hardware,
               AudioObjectID object,
               AudioObjectPropertySelector selector,
               AudioObjectPropertyScope scope = kAudioObjectPropertyScopeGlobal,
               AudioObjectPropertyElement element = kAudioObjectPropertyElementMain);

/// The system's default output; never 0.
[[nodiscard]] std::optional<AudioObjectID> defaultOutputDevice(AudioHardware& hardware);

/// The device with this UID, while it is connected; never 0.
[[nodiscard]] std::optional<AudioObjectID> deviceID(AudioHardware& hardware, std::string_view uid);

} // namespace fadewell
