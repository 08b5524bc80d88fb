#include "platform/linux/systemkeys/QtKeySequence.h"

#include "shortcuts/Modifiers.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <xkbcommon/xkbcommon.h>

namespace fadewell {
namespace {

namespace classic = shortcuts::classic;

constexpr std::uint32_t keypad = 0x1; // no classic bit
constexpr auto modifierNames =
    std::to_array<std::pair<std::string_view, std::uint32_t>>({{"Ctrl+", classic::control},
                                                               {"Alt+", classic::option},
                                                               {"Shift+", classic::shift},
                                                               {"Meta+", classic::command},
                                                               {"Num+", keypad}});

struct Name {
    std::string_view qt;
    const char* symbol;
};

// What the standards of X call otherwise.
constexpr auto keyNames = std::to_array<Name>({
    {"Esc", "Escape"},
    {"Backtab", "ISO_Left_Tab"},
    {"Backspace", "BackSpace"},
    {"Enter", "KP_Enter"},
    {"Ins", "Insert"},
    {"Del", "Delete"},
    {"PgUp", "Page_Up"},
    {"PgDown", "Page_Down"},
    {"CapsLock", "Caps_Lock"},
    {"NumLock", "Num_Lock"},
    {"ScrollLock", "Scroll_Lock"},
    {"SysReq", "Sys_Req"},
    {"Space", "space"},
    {"Volume Down", "XF86AudioLowerVolume"},
    {"Volume Mute", "XF86AudioMute"},
    {"Volume Up", "XF86AudioRaiseVolume"},
});

constexpr auto keypadNames = std::to_array<Name>({
    {"+", "KP_Add"},
    {"-", "KP_Subtract"},
    {"*", "KP_Multiply"},
    {"/", "KP_Divide"},
    {".", "KP_Decimal"},
    {",", "KP_Separator"},
    {"=", "KP_Equal"},
});

template <class Names>
const char* find(const Names& names, std::string_view name)
{
    const auto found = std::find_if(
        names.begin(), names.end(), [name](const Name& entry) { return entry.qt == name; });
    return found == names.end() ? nullptr : found->symbol;
}

/// The code point of a text of one; absent for any other.
std::optional<std::uint32_t> onlyCharacter(std::string_view text)
{
    const auto first = text.empty() ? 0U : static_cast<unsigned char>(text.front());
    const std::size_t length = first < 0x80 ? 1 : first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (text.size() != length || first == 0) {
        return std::nullopt;
    }
    std::uint32_t point = length == 1 ? first : first & (0x7FU >> length);
    for (const char byte : text.substr(1)) {
        point = point << 6U | (static_cast<unsigned char>(byte) & 0x3FU);
    }
    return point;
}

xkb_keysym_t symbolOf(std::string_view key, bool isOnKeypad)
{
    if (isOnKeypad) {
        const auto* known = find(keypadNames, key);
        const auto* plain = find(keyNames, key);
        const auto name = known ? known : "KP_" + std::string(plain ? plain : key);
        // "KP_Enter" is in both.
        const auto symbol = xkb_keysym_from_name(name.c_str(), XKB_KEYSYM_NO_FLAGS);
        return symbol != XKB_KEY_NoSymbol || !plain
                   ? symbol
                   : xkb_keysym_from_name(plain, XKB_KEYSYM_NO_FLAGS);
    }
    if (const auto point = onlyCharacter(key)) {
        return xkb_utf32_to_keysym(*point);
    }
    const auto* known = find(keyNames, key);
    return xkb_keysym_from_name(known ? known : std::string(key).c_str(), XKB_KEYSYM_NO_FLAGS);
}

} // namespace

std::optional<KeyBinding> parseQtKeySequence(std::string_view text)
{
    text = text.substr(0, text.find(", "));
    KeyBinding binding;
    for (bool isModifier = true; isModifier;) {
        const auto found =
            std::find_if(modifierNames.begin(), modifierNames.end(), [text](const auto& entry) {
                return text.starts_with(entry.first);
            });
        isModifier = found != modifierNames.end();
        if (isModifier) {
            binding.modifiers |= found->second;
            text.remove_prefix(found->first.size());
        }
    }
    const bool isOnKeypad = (binding.modifiers & keypad) != 0;
    binding.modifiers &= ~keypad;
    binding.symbol = xkb_keysym_to_lower(symbolOf(text, isOnKeypad));
    return binding.symbol == XKB_KEY_NoSymbol ? std::nullopt : std::optional(binding);
}

} // namespace fadewell
