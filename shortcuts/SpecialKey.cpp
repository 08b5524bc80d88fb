#include "shortcuts/SpecialKey.h"

#include "base/LocalizedText.h"
#include "shortcuts/Modifiers.h"

#include <algorithm>
#include <string_view>

namespace fadewell::shortcuts {
namespace {

// U+20E3 draws a keycap around the character before it.
#define KEYCAP "\u20E3"

struct Entry {
    std::uint8_t keyCode;
    const char* symbol; ///< null: a message
};

// In the order of the enumeration.
constexpr std::array<Entry, specialKeyCount> entries{{
    {36, "\u21A9"},
    {51, "\u232B"},
    {117, "\u2326"},
    {119, "\u2198"},
    {53, "\u238B"},
    {114, "?\u20DD"},
    {115, "\u2196"},
    {49, nullptr},
    {48, "\u21E5"},
    {116, "\u21DE"},
    {121, "\u21DF"},
    {126, "\u2191"},
    {124, "\u2192"},
    {125, "\u2193"},
    {123, "\u2190"},
    {122, "F1"},
    {120, "F2"},
    {99, "F3"},
    {118, "F4"},
    {96, "F5"},
    {97, "F6"},
    {98, "F7"},
    {100, "F8"},
    {101, "F9"},
    {109, "F10"},
    {103, "F11"},
    {111, "F12"},
    {105, "F13"},
    {107, "F14"},
    {113, "F15"},
    {106, "F16"},
    {64, "F17"},
    {79, "F18"},
    {80, "F19"},
    {90, "F20"},
    {82, "0" KEYCAP},
    {83, "1" KEYCAP},
    {84, "2" KEYCAP},
    {85, "3" KEYCAP},
    {86, "4" KEYCAP},
    {87, "5" KEYCAP},
    {88, "6" KEYCAP},
    {89, "7" KEYCAP},
    {91, "8" KEYCAP},
    {92, "9" KEYCAP},
    {71, "\u2612" KEYCAP},
    {65, "." KEYCAP},
    {75, "/" KEYCAP},
    {76, "\u21A9" KEYCAP},
    {81, "=" KEYCAP},
    {78, "-" KEYCAP},
    {67, "*" KEYCAP},
    {69, "+" KEYCAP},
}};

constexpr std::size_t index(SpecialKey key)
{
    return static_cast<std::size_t>(key);
}
static_assert(index(SpecialKey::keypadPlus) + 1 == specialKeyCount);

bool impliesFunction(SpecialKey key)
{
    switch (key) {
    case SpecialKey::help:
    case SpecialKey::deleteForward:
    case SpecialKey::keypadClear:
    case SpecialKey::home:
    case SpecialKey::end:
    case SpecialKey::pageUp:
    case SpecialKey::pageDown:
    case SpecialKey::upArrow:
    case SpecialKey::rightArrow:
    case SpecialKey::downArrow:
    case SpecialKey::leftArrow:
        return true;
    default:
        return key >= SpecialKey::f1 && key <= SpecialKey::f20;
    }
}

/// U+F704 for F1, and so on, in UTF-8.
std::string functionKeyCharacter(int number)
{
    return {'\xEF', '\x9C', static_cast<char>(0x84 + number - 1)};
}

} // namespace

std::optional<SpecialKey> specialKey(std::int64_t keyCode)
{
    const auto found = std::find_if(entries.begin(), entries.end(), [keyCode](const Entry& entry) {
        return entry.keyCode == keyCode;
    });
    return found == entries.end() ? std::nullopt
                                  : std::optional(static_cast<SpecialKey>(found - entries.begin()));
}

std::int64_t keyCode(SpecialKey key)
{
    return entries[index(key)].keyCode;
}

std::string symbol(SpecialKey key, const Messages& messages)
{
    const char* fixed = entries[index(key)].symbol;
    return fixed ? fixed : localizedCapitalized(messages.text("space_key"));
}

std::optional<std::string> menuKeyEquivalent(SpecialKey key)
{
    if (key >= SpecialKey::keypad0) {
        return std::nullopt;
    }
    if (key == SpecialKey::space) {
        return " ";
    }
    if (const int number = functionKeyNumber(keyCode(key)); number > 0) {
        return functionKeyCharacter(number);
    }
    return entries[index(key)].symbol;
}

int functionKeyNumber(std::int64_t keyCode)
{
    const auto key = specialKey(keyCode);
    return key && *key >= SpecialKey::f1 && *key <= SpecialKey::f20
               ? static_cast<int>(index(*key) - index(SpecialKey::f1)) + 1
               : 0;
}

std::uint32_t withoutImpliedFunction(std::int64_t keyCode, std::uint32_t modifiers)
{
    const auto key = specialKey(keyCode);
    return key && impliesFunction(*key) ? modifiers & ~classic::function : modifiers;
}

} // namespace fadewell::shortcuts
