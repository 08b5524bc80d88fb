#pragma once

#include "shortcuts/Shortcut.h"

#include <functional>
#include <optional>
#include <string>

namespace fadewell::shortcuts {

/// What a recorder does about a conflict.
enum class ConflictBehavior {
    block, ///< says so and refuses
    warn,  ///< lets the user decide
    allow  ///< accepts without a word
};

/// What a recorder does about each kind of conflict.
struct ConflictPolicy {
    ConflictBehavior menuItem = ConflictBehavior::block;
    ConflictBehavior systemShortcut = ConflictBehavior::warn;
    ConflictBehavior disallowed = ConflictBehavior::block; ///< what the system never delivers

    bool operator==(const ConflictPolicy&) const = default;
};

/// The answer of a caller's own check.
struct ValidationResult {
    std::optional<std::string> disallowedReason; ///< absent: allowed

    [[nodiscard]] static ValidationResult allow() { return {}; }
    [[nodiscard]] static ValidationResult disallow(std::string reason)
    {
        return {std::move(reason)};
    }
};

using ValidateShortcut = std::function<ValidationResult(const Shortcut&)>;

} // namespace fadewell::shortcuts
