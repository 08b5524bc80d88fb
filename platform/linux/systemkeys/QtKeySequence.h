#pragma once

#include "platform/linux/hotkeys/KeyBinding.h"

#include <optional>
#include <string_view>

namespace fadewell {

/// A combination in the words of Qt, such as "Meta+Shift+PgUp", in which KDE keeps its own; of
/// several one after the other, the first. Absent for what is none.
[[nodiscard]] std::optional<KeyBinding> parseQtKeySequence(std::string_view text);

} // namespace fadewell
