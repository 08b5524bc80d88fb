#include "platform/linux/LogText.h"

#include "platform/linux/Utf8.h"

#include <cstdint>
#include <fmt/format.h>
#include <iterator>

namespace fadewell {
namespace {

bool isHarmful(char32_t c)
{
    const bool isControl = c < 0x20 || (c >= 0x7f && c < 0xa0);
    const bool isLineEnd = c == 0x2028 || c == 0x2029;
    const bool isDirection =
        c == 0x200e || c == 0x200f || (c >= 0x202a && c <= 0x202e) || (c >= 0x2066 && c <= 0x2069);
    return isControl || isLineEnd || isDirection;
}

void appendEscaped(std::string& out, char32_t c)
{
    switch (c) {
    case U'\n':
        out += "\\n";
        break;
    case U'\r':
        out += "\\r";
        break;
    case U'\t':
        out += "\\t";
        break;
    default:
        fmt::format_to(std::back_inserter(out), "\\u{{{:x}}}", static_cast<std::uint32_t>(c));
    }
}

} // namespace

std::string escapedForLog(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const auto decoded = decodeUtf8(text);
        if (!decoded) {
            fmt::format_to(
                std::back_inserter(out), "\\x{:02x}", static_cast<unsigned char>(text.front()));
            text.remove_prefix(1);
            continue;
        }
        if (isHarmful(decoded->codePoint)) {
            appendEscaped(out, decoded->codePoint);
        } else {
            out += text.substr(0, decoded->length);
        }
        text.remove_prefix(decoded->length);
    }
    return out;
}

} // namespace fadewell
