#include "platform/linux/Base64.h"

#include <cstdint>

namespace fadewell {
namespace {

constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

} // namespace

std::string encodeBase64(std::string_view bytes)
{
    std::string text;
    for (std::size_t start = 0; start < bytes.size(); start += 3) {
        const std::string_view group = bytes.substr(start, 3);
        std::uint32_t bits = 0;
        for (std::size_t index = 0; index < 3; ++index) {
            const auto byte = index < group.size() ? static_cast<unsigned char>(group[index]) : 0U;
            bits = (bits << 8) | byte;
        }
        for (std::size_t index = 0; index < 4; ++index) {
            text += index <= group.size() ? alphabet[(bits >> (18 - 6 * index)) & 0x3f] : '=';
        }
    }
    return text;
}

std::optional<std::string> decodeBase64(std::string_view text)
{
    if (text.size() % 4 != 0) {
        return std::nullopt;
    }
    const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
    text.remove_suffix(padding);
    std::string bytes;
    std::uint32_t bits = 0;
    unsigned pending = 0;
    for (const char c : text) {
        const std::size_t value = alphabet.find(c);
        if (value == std::string_view::npos) {
            return std::nullopt;
        }
        bits = (bits << 6) | static_cast<std::uint32_t>(value);
        pending += 6;
        if (pending >= 8) {
            pending -= 8;
            bytes += static_cast<char>((bits >> pending) & 0xff);
        }
    }
    return bytes;
}

} // namespace fadewell
