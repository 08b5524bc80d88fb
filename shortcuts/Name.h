#pragma once

#include "shortcuts/Shortcut.h"

#include <compare>
#include <optional>
#include <string>

namespace fadewell::shortcuts {

/// What a shortcut is for. Made by KeyboardShortcuts::name, which stores the initial shortcut.
struct Name {
    std::string rawValue; ///< also the suffix of its storage key
    /// What it has until the user changes it.
    std::optional<Shortcut> initialShortcut{};

    auto operator<=>(const Name&) const = default;
};

} // namespace fadewell::shortcuts
