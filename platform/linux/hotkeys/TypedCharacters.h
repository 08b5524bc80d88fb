#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>
#include <xkbcommon/xkbcommon.h>

namespace fadewell {

/// What keys type: in the current layout when that writes ASCII letters, else in the first of the
/// keyboard's layouts that does, else on a US keyboard. [one queue]
class TypedCharacters final {
public:
    /// A key that types a symbol.
    struct Key {
        xkb_keycode_t keycode = 0;
        bool needsShift = false;
    };

    /// The keyboard's layouts; null for none.
    void setKeymap(std::shared_ptr<xkb_keymap> keymap) { keymap_ = std::move(keymap); }
    /// True when this changes anything.
    bool setLayout(xkb_layout_index_t layout);

    /// Without modifiers; empty for a key that types nothing.
    [[nodiscard]] std::string of(xkb_keycode_t keycode) const;

    /// The keys that type a symbol, in the same layout, else in the first that has it; empty for
    /// one that no key types.
    [[nodiscard]] std::vector<Key> keysOf(xkb_keysym_t symbol) const;

    /// What the desktop standards call the key of a US keyboard, such as "m" or "F5"; empty for a
    /// key that it doesn't have.
    [[nodiscard]] static std::string symbolName(xkb_keycode_t keycode);

private:
    struct Layout {
        xkb_keymap* keymap = nullptr; ///< null: none at all
        xkb_layout_index_t index = 0;
    };

    [[nodiscard]] Layout asciiLayout() const;
    [[nodiscard]] static std::shared_ptr<xkb_keymap> usKeymap();

    std::shared_ptr<xkb_keymap> keymap_;
    xkb_layout_index_t layout_ = 0;
};

} // namespace fadewell
