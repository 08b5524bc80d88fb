#pragma once

#include "platform/linux/hotkeys/KeyBinding.h"

#include <optional>
#include <string_view>

namespace fadewell {

/// A combination in the words of GTK, such as "<Super><Shift>Page_Up", in which GNOME, Cinnamon,
/// MATE and Xfce keep theirs. Absent for what is none: "", "disabled", an unknown key, or
/// a modifier that shortcuts don't have.
[[nodiscard]] std::optional<KeyBinding> parseGtkAccelerator(std::string_view text);

} // namespace fadewell
