#pragma once

#include <cstdint>
#include <optional>

namespace fadewell {

/// A combination as desktops keep theirs: by what the key types, so that its place depends on the
/// keyboard's layout.
struct KeyBinding {
    std::uint32_t modifiers = 0; ///< classic bits
    std::uint32_t symbol = 0;    ///< as xkbcommon numbers them, in lower case
    /// The kernel's code, for the few that are bound to a place instead.
    std::optional<std::uint16_t> evdev{};

    bool operator==(const KeyBinding&) const = default;
};

} // namespace fadewell
