#include "platform/linux/Utf8.h"

namespace fadewell {

std::optional<DecodedUtf8> decodeUtf8(std::string_view text)
{
    if (text.empty()) {
        return std::nullopt;
    }
    const auto byte = [&text](std::size_t index) {
        return static_cast<unsigned char>(text[index]);
    };
    const unsigned char first = byte(0);
    if (first < 0x80) {
        return DecodedUtf8{first, 1};
    }
    const std::size_t length = first >= 0xf0 ? 4 : first >= 0xe0 ? 3 : 2;
    if (first < 0xc2 || first > 0xf4 || text.size() < length) {
        return std::nullopt;
    }
    auto codePoint = static_cast<char32_t>(first & (0x7fU >> length));
    for (std::size_t index = 1; index < length; ++index) {
        if ((byte(index) & 0xc0) != 0x80) {
            return std::nullopt;
        }
        codePoint = (codePoint << 6) | (byte(index) & 0x3fU);
    }
    const bool isOverlong =
        (length == 3 && codePoint < 0x800) || (length == 4 && codePoint < 0x10000);
    const bool isSurrogate = codePoint >= 0xd800 && codePoint <= 0xdfff;
    if (isOverlong || isSurrogate || codePoint > 0x10ffff) {
        return std::nullopt;
    }
    return DecodedUtf8{codePoint, length};
}

bool isValidUtf8(std::string_view text)
{
    while (!text.empty()) {
        const auto decoded = decodeUtf8(text);
        if (!decoded) {
            return false;
        }
        text.remove_prefix(decoded->length);
    }
    return true;
}

} // namespace fadewell
