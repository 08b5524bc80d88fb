#include "platform/linux/systemkeys/GtkAccelerator.h"

#include "platform/linux/hotkeys/KeyCodeMap.h"
#include "shortcuts/Modifiers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <linux/input-event-codes.h>
#include <string>
#include <utility>
#include <xkbcommon/xkbcommon.h>

namespace fadewell {
namespace {

namespace classic = shortcuts::classic;

constexpr auto modifierNames = std::to_array<std::pair<std::string_view, std::uint32_t>>({
    {"shift", classic::shift},
    {"shft", classic::shift},
    {"control", classic::control},
    {"ctrl", classic::control},
    {"ctl", classic::control},
    {"primary", classic::control},
    {"alt", classic::option},
    {"mod1", classic::option},
    {"meta", classic::option}, // on the keys of Alt where keyboards have it at all
    {"super", classic::command},
    {"mod4", classic::command},
    {"release", 0}, // acts when it is let go: the keys are the same
});

std::string lowered(std::string_view text)
{
    std::string result(text);
    for (char& character : result) {
        character = character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                         : character;
    }
    return result;
}

std::optional<std::uint32_t> modifierNamed(std::string_view name)
{
    const auto found =
        std::find_if(modifierNames.begin(),
                     modifierNames.end(),
                     [name = lowered(name)](const auto& entry) { return entry.first == name; });
    return found == modifierNames.end() ? std::nullopt : std::optional(found->second);
}

/// "0x29": an X keycode.
std::optional<std::uint16_t> numbered(std::string_view name)
{
    constexpr int hexadecimal = 16;
    std::uint16_t code = 0;
    if (!name.starts_with("0x")) {
        return std::nullopt;
    }
    const auto* end = name.data() + name.size();
    const auto [read, error] = std::from_chars(name.data() + 2, end, code, hexadecimal);
    return error == std::errc() && read == end && code >= xKeycodeOffset
               ? std::optional(static_cast<std::uint16_t>(code - xKeycodeOffset))
               : std::nullopt;
}

bool setKey(KeyBinding& binding, std::string_view name)
{
    if (lowered(name) == "above_tab") {
        binding.evdev = KEY_GRAVE;
        return true;
    }
    if ((binding.evdev = numbered(name))) {
        return true;
    }
    const std::string terminated(name);
    auto symbol = xkb_keysym_from_name(terminated.c_str(), XKB_KEYSYM_NO_FLAGS);
    if (symbol == XKB_KEY_NoSymbol) {
        symbol = xkb_keysym_from_name(terminated.c_str(), XKB_KEYSYM_CASE_INSENSITIVE);
    }
    binding.symbol = xkb_keysym_to_lower(symbol);
    return symbol != XKB_KEY_NoSymbol;
}

} // namespace

std::optional<KeyBinding> parseGtkAccelerator(std::string_view text)
{
    KeyBinding binding;
    while (text.starts_with('<')) {
        const auto end = text.find('>');
        const auto modifier =
            end == std::string_view::npos ? std::nullopt : modifierNamed(text.substr(1, end - 1));
        if (!modifier) {
            return std::nullopt;
        }
        binding.modifiers |= *modifier;
        text.remove_prefix(end + 1);
    }
    return setKey(binding, text) ? std::optional(binding) : std::nullopt;
}

} // namespace fadewell
