#include "shortcuts/ShortcutText.h"

#include "shortcuts/Modifiers.h"
#include "shortcuts/SpecialKey.h"

#include <array>
#include <limits>
#include <utility>

namespace fadewell::shortcuts {
namespace {

// The globe with U+FE0E is drawn as a character and not as a picture.
constexpr std::array<std::pair<std::uint32_t, const char*>, 5> glyphs{
    {{classic::control, "\u2303"},
     {classic::option, "\u2325"},
     {classic::shift, "\u21E7"},
     {classic::command, "\u2318"},
     {classic::function, "\U0001F310\uFE0E"}}};

std::string typedCharacter(const Shortcut& shortcut, HotKeyService& service)
{
    const auto code = shortcut.carbonKeyCode;
    return code >= 0 && code <= std::numeric_limits<std::uint16_t>::max()
               ? service.character(static_cast<std::uint32_t>(code))
               : std::string();
}

} // namespace

std::string modifierGlyphs(std::int64_t modifiers)
{
    std::string result;
    for (const auto& [bit, glyph] : glyphs) {
        result += (modifiers & bit) != 0 ? glyph : "";
    }
    return result;
}

std::string description(const Shortcut& shortcut, HotKeyService& service, const Messages& messages)
{
    const auto special = specialKey(shortcut.carbonKeyCode);
    return modifierGlyphs(shortcut.carbonModifiers) +
           (special ? symbol(*special, messages) : typedCharacter(shortcut, service));
}

std::string menuKeyEquivalent(const Shortcut& shortcut, HotKeyService& service)
{
    const auto special = specialKey(shortcut.carbonKeyCode);
    return special ? menuKeyEquivalent(*special).value_or("") : typedCharacter(shortcut, service);
}

} // namespace fadewell::shortcuts
