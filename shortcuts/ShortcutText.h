#pragma once

#include "shortcuts/HotKeyService.h"
#include "shortcuts/Messages.h"
#include "shortcuts/Shortcut.h"

#include <cstdint>
#include <string>

namespace fadewell::shortcuts {

/// The symbols of stored modifiers, always in the same order.
[[nodiscard]] std::string modifierGlyphs(std::int64_t modifiers);

/// A shortcut as it is shown: "⌃⌥m". [main]
[[nodiscard]] std::string
description(const Shortcut& shortcut, HotKeyService& service, const Messages& messages);

/// What stands for the key of a shortcut in a menu entry; empty when nothing does. [main]
[[nodiscard]] std::string menuKeyEquivalent(const Shortcut& shortcut, HotKeyService& service);

} // namespace fadewell::shortcuts
