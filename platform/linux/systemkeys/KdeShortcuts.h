#pragma once

#include "platform/linux/hotkeys/KeyBinding.h"

#include <string>
#include <vector>

namespace fadewell::KdeShortcuts {

/// What KDE's programs have bound, by the texts of kglobalshortcutsrc files: a later one counts
/// before an earlier one.
[[nodiscard]] std::vector<KeyBinding> parse(const std::vector<std::string>& files);

} // namespace fadewell::KdeShortcuts
