#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace fadewell::shortcuts {

/// A key with its modifiers.
struct Shortcut {
    std::int64_t carbonKeyCode = 0;   ///< virtual key code, independent of the keyboard's layout
    std::int64_t carbonModifiers = 0; ///< see classic::

    auto operator<=>(const Shortcut&) const = default;

    /// A JSON object with the two integers.
    [[nodiscard]] std::string encoded() const;
    /// Absent for anything but an object with both integers.
    [[nodiscard]] static std::optional<Shortcut> decoded(std::string_view json);
};

} // namespace fadewell::shortcuts
