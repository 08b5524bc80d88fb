#pragma once

#include <string>
#include <string_view>

namespace fadewell {

/// Text of other programs made safe for a terminal: control characters, line separators and marks
/// that turn the writing direction appear as escapes such as \x1b, broken UTF-8 as U+FFFD.
[[nodiscard]] std::string plainText(std::string_view text);

/// How many terminal columns a text takes that has no control characters.
[[nodiscard]] int displayWidth(std::string_view text);

} // namespace fadewell
