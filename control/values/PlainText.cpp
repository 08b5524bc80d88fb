#include "control/values/PlainText.h"

#include <fmt/format.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

namespace fadewell {
namespace {

icu::UnicodeString decode(std::string_view text)
{
    return icu::UnicodeString::fromUTF8({text.data(), static_cast<int32_t>(text.size())});
}

bool isUnsafe(UChar32 character)
{
    switch (u_charType(character)) {
    case U_CONTROL_CHAR:
    case U_LINE_SEPARATOR:
    case U_PARAGRAPH_SEPARATOR:
    case U_SURROGATE:
        return true;
    case U_FORMAT_CHAR:
        return u_hasBinaryProperty(character, UCHAR_BIDI_CONTROL) != 0;
    default:
        return false;
    }
}

int columns(UChar32 character)
{
    switch (u_charType(character)) {
    case U_NON_SPACING_MARK:
    case U_ENCLOSING_MARK:
    case U_FORMAT_CHAR:
        return 0;
    default:
        break;
    }
    const auto width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

} // namespace

std::string plainText(std::string_view text)
{
    const auto decoded = decode(text);
    std::string result;
    for (int32_t index = 0; index < decoded.length(); index = decoded.moveIndex32(index, 1)) {
        const UChar32 character = decoded.char32At(index);
        if (!isUnsafe(character)) {
            icu::UnicodeString(character).toUTF8String(result);
        } else if (character < 0x100) {
            result += fmt::format("\\x{:02x}", character);
        } else {
            result += fmt::format("\\u{:04x}", character);
        }
    }
    return result;
}

int displayWidth(std::string_view text)
{
    const auto decoded = decode(text);
    int width = 0;
    for (int32_t index = 0; index < decoded.length(); index = decoded.moveIndex32(index, 1)) {
        width += columns(decoded.char32At(index));
    }
    return width;
}

} // namespace fadewell
