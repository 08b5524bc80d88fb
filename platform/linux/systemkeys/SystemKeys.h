#pragma once

#include "platform/linux/XdgPaths.h"
#include "platform/linux/hotkeys/KeyBinding.h"

#include <vector>

namespace fadewell::SystemKeys {

/// What the desktop of this session (XDG_CURRENT_DESKTOP) has bound itself, as far as it keeps that
/// where others can read it: GNOME and its relatives, Cinnamon, MATE, Xfce, KDE. [main]
[[nodiscard]] std::vector<KeyBinding> read(const XdgPaths::Environment& environment);

/// With this process's environment.
[[nodiscard]] std::vector<KeyBinding> read();

} // namespace fadewell::SystemKeys
