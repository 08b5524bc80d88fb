#pragma once

#include "platform/linux/hotkeys/KeyBinding.h"

#include <string>
#include <vector>

namespace fadewell::XfceShortcuts {

/// What Xfce has bound to commands and to its window manager, by the texts of its
/// xfce4-keyboard-shortcuts.xml files: a later one counts before an earlier one. A file that isn't
/// well-formed counts as far as it is.
[[nodiscard]] std::vector<KeyBinding> parse(const std::vector<std::string>& files);

} // namespace fadewell::XfceShortcuts
