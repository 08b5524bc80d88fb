#pragma once

#include <string>
#include <string_view>

namespace fadewell {

/// Text fit for one line of a log or a terminal: names come from other programs, and none of them
/// may end the line, move the cursor or turn the direction of writing. What could is written as
/// \n, \t, \u{9b} and the like; bytes that are no UTF-8 as \xff.
[[nodiscard]] std::string escapedForLog(std::string_view text);

} // namespace fadewell
