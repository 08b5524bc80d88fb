#pragma once

#include "shortcuts/Shortcut.h"

#include <optional>
#include <string>

namespace fadewell::shortcuts {

/// A shortcut whose combination the desktop assigns.
struct NamedBinding {
    std::string id;          ///< the name's raw value
    std::string description; ///< localized; the desktop shows it
    std::optional<Shortcut> preferred{};

    bool operator==(const NamedBinding&) const = default;
};

} // namespace fadewell::shortcuts
