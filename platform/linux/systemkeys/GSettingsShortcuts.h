#pragma once

#include "platform/linux/hotkeys/KeyBinding.h"

#include <string>
#include <vector>

namespace fadewell::GSettingsShortcuts {

/// What a desktop that keeps its settings in GSettings has bound, by its name in
/// XDG_CURRENT_DESKTOP. Empty for any other desktop; a schema that isn't installed is left out.
[[nodiscard]] std::vector<KeyBinding> read(const std::string& desktop);

} // namespace fadewell::GSettingsShortcuts
