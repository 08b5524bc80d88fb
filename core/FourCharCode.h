#pragma once

#include <cstdint>
#include <string_view>

namespace fadewell {

/// The bytes of `text` packed big-endian into 32 bits; only the first four count.
[[nodiscard]] constexpr std::uint32_t fourCharCode(std::string_view text)
{
    std::uint32_t code = 0;
    for (const char character : text.substr(0, 4)) {
        code = (code << 8) | static_cast<unsigned char>(character);
    }
    return code;
}

} // namespace fadewell
