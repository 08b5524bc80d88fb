#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>
#include <xkbcommon/xkbcommon.h>

namespace fadewell {

/// Which bits of an X server's modifier state mean what on its keyboard.
struct XModifiers {
    std::uint16_t command = 0; ///< Super; 0 where the keyboard has none, likewise below
    std::uint16_t option = 0;  ///< Alt
    std::uint16_t numLock = 0;
    std::uint16_t scrollLock = 0;

    bool operator==(const XModifiers&) const = default;

    /// The state that a grab for classic modifiers waits for; 0 with `isPossible` false when the
    /// keyboard can't produce them.
    [[nodiscard]] std::uint16_t state(std::uint32_t classicModifiers, bool& isPossible) const;
    /// Those four and shift and control, without the locks.
    [[nodiscard]] std::uint16_t relevant() const;
    /// Every combination of the locks, each once: they never change what a shortcut is.
    [[nodiscard]] std::vector<std::uint16_t> lockVariants() const;
};

/// The core keyboard of an X server. [one thread]
class XKeyboard final {
public:
    /// False when the server's keyboard extension is too old or missing; without it nothing works.
    /// A held key sends one release from then on.
    [[nodiscard]] bool setUp(xcb_connection_t* connection);

    /// Reads the layouts and modifiers; false when the server doesn't answer.
    [[nodiscard]] bool load();

    /// The first event of the keyboard extension, which carries all its events.
    [[nodiscard]] std::uint8_t firstEvent() const { return firstEvent_; }
    [[nodiscard]] const std::shared_ptr<xkb_keymap>& keymap() const { return keymap_; }
    [[nodiscard]] const XModifiers& modifiers() const { return modifiers_; }
    [[nodiscard]] xkb_layout_index_t layout() const { return layout_; }

private:
    [[nodiscard]] bool selectEvents() const;
    [[nodiscard]] bool readModifiers();
    [[nodiscard]] bool hasSymbol(xkb_keycode_t keycode, std::span<const xkb_keysym_t> wanted) const;

    xcb_connection_t* connection_ = nullptr;
    std::uint8_t firstEvent_ = 0;
    std::int32_t device_ = -1;
    std::shared_ptr<xkb_context> context_;
    std::shared_ptr<xkb_keymap> keymap_;
    XModifiers modifiers_;
    xkb_layout_index_t layout_ = 0;
};

} // namespace fadewell
