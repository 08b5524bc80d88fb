#include "platform/linux/hotkeys/TypedCharacters.h"

#include "platform/linux/hotkeys/KeyCodeMap.h"

#include <array>
#include <cctype>
#include <linux/input-event-codes.h>

namespace fadewell {
namespace {

std::string typed(xkb_keymap* keymap, xkb_keycode_t keycode, xkb_layout_index_t layout)
{
    const xkb_keysym_t* symbols = nullptr;
    if (xkb_keymap_key_get_syms_by_level(keymap, keycode, layout, 0, &symbols) != 1) {
        return {};
    }
    std::array<char, 8> text{};
    const int size = xkb_keysym_to_utf8(symbols[0], text.data(), text.size());
    const bool isPrintable = size > 1 && static_cast<unsigned char>(text[0]) > 0x20 &&
                             static_cast<unsigned char>(text[0]) != 0x7F;
    return isPrintable ? text.data() : "";
}

// Every Latin layout has ASCII letters on the keys of the home row, wherever the rest may be.
bool writesAscii(xkb_keymap* keymap, xkb_layout_index_t layout)
{
    for (const int key : {KEY_D, KEY_F, KEY_G, KEY_H}) {
        const auto text = typed(keymap, static_cast<xkb_keycode_t>(key + xKeycodeOffset), layout);
        if (text.size() != 1 || std::isalpha(static_cast<unsigned char>(text[0])) == 0) {
            return false;
        }
    }
    return true;
}

bool hasSymbol(xkb_keymap* keymap,
               xkb_keycode_t keycode,
               xkb_layout_index_t layout,
               xkb_level_index_t level,
               xkb_keysym_t symbol)
{
    const xkb_keysym_t* symbols = nullptr;
    return xkb_keymap_key_get_syms_by_level(keymap, keycode, layout, level, &symbols) == 1 &&
           symbols[0] == symbol;
}

std::vector<TypedCharacters::Key>
keysTyping(xkb_keysym_t symbol, xkb_keymap* keymap, xkb_layout_index_t layout)
{
    // The second level of a keypad is reached by Num Lock, of every other key by shift.
    const bool isOnKeypad = symbol >= XKB_KEY_KP_Space && symbol <= XKB_KEY_KP_Equal;
    std::vector<TypedCharacters::Key> keys;
    const auto last = xkb_keymap_max_keycode(keymap);
    for (auto keycode = xkb_keymap_min_keycode(keymap); keycode <= last; ++keycode) {
        if (hasSymbol(keymap, keycode, layout, 0, symbol)) {
            keys.push_back({keycode, false});
        } else if (hasSymbol(keymap, keycode, layout, 1, symbol)) {
            keys.push_back({keycode, !isOnKeypad});
        }
    }
    return keys;
}

} // namespace

std::shared_ptr<xkb_keymap> TypedCharacters::usKeymap()
{
    static const std::shared_ptr<xkb_keymap> keymap = [] {
        const std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> context(
            xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES), xkb_context_unref);
        const xkb_rule_names names{nullptr, nullptr, "us", nullptr, nullptr};
        auto* made =
            context ? xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS)
                    : nullptr;
        return made ? std::shared_ptr<xkb_keymap>(made, xkb_keymap_unref) : nullptr;
    }();
    return keymap;
}

std::string TypedCharacters::symbolName(xkb_keycode_t keycode)
{
    const auto keymap = usKeymap();
    const xkb_keysym_t* symbols = nullptr;
    std::array<char, 64> name{};
    const bool isKey =
        keymap && xkb_keymap_key_get_syms_by_level(keymap.get(), keycode, 0, 0, &symbols) == 1 &&
        xkb_keysym_get_name(symbols[0], name.data(), name.size()) > 0;
    return isKey ? name.data() : "";
}

bool TypedCharacters::setLayout(xkb_layout_index_t layout)
{
    return std::exchange(layout_, layout) != layout;
}

TypedCharacters::Layout TypedCharacters::asciiLayout() const
{
    if (keymap_) {
        if (writesAscii(keymap_.get(), layout_)) {
            return {keymap_.get(), layout_};
        }
        const auto count = xkb_keymap_num_layouts(keymap_.get());
        for (xkb_layout_index_t layout = 0; layout < count; ++layout) {
            if (writesAscii(keymap_.get(), layout)) {
                return {keymap_.get(), layout};
            }
        }
    }
    return {usKeymap().get(), 0};
}

std::string TypedCharacters::of(xkb_keycode_t keycode) const
{
    const auto [keymap, layout] = asciiLayout();
    return keymap ? typed(keymap, keycode, layout) : "";
}

std::vector<TypedCharacters::Key> TypedCharacters::keysOf(xkb_keysym_t symbol) const
{
    const auto ascii = asciiLayout();
    std::vector<Key> keys;
    if (ascii.keymap) {
        keys = keysTyping(symbol, ascii.keymap, ascii.index);
    }
    const auto count = keymap_ ? xkb_keymap_num_layouts(keymap_.get()) : 0;
    for (xkb_layout_index_t layout = 0; layout < count && keys.empty(); ++layout) {
        keys = keysTyping(symbol, keymap_.get(), layout);
    }
    return keys;
}

} // namespace fadewell
