#pragma once

#include "audio/AudioTypes.h"

#include <cstddef>
#include <cstring>
#include <span>
#include <type_traits>
#include <vector>

namespace fadewell::pipewire {

/// A property's value as it crosses the seam.
using PropertyBytes = std::vector<std::byte>;

template <class Value>
[[nodiscard]] PropertyBytes bytesOf(const Value& value)
{
    static_assert(std::is_trivially_copyable_v<Value>);
    const auto bytes = std::as_bytes(std::span(&value, 1));
    return PropertyBytes(bytes.begin(), bytes.end());
}

[[nodiscard]] inline PropertyBytes bytesOf(const std::vector<AudioObjectID>& objects)
{
    const auto bytes = std::as_bytes(std::span(objects));
    return PropertyBytes(bytes.begin(), bytes.end());
}

/// False when the sizes differ.
template <class Value>
[[nodiscard]] bool readBytes(std::span<const std::byte> bytes, Value& value)
{
    static_assert(std::is_trivially_copyable_v<Value>);
    if (bytes.size() != sizeof(Value)) {
        return false;
    }
    std::memcpy(&value, bytes.data(), sizeof(Value));
    return true;
}

} // namespace fadewell::pipewire
