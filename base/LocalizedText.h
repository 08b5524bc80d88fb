#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace fadewell {

/// Orders names as a file browser does: by the user's locale, without regard to case, digit runs by
/// their value. Below, at or above 0. [any thread]
[[nodiscard]] int localizedStandardCompare(std::string_view left, std::string_view right);

/// A fraction as a whole percentage in the user's locale; 0.7 is "70%" in English.
[[nodiscard]] std::string localizedPercent(double fraction);

/// Names joined as the user's locale lists them: "A, B, and C" in English.
[[nodiscard]] std::string localizedList(const std::vector<std::string>& names);

} // namespace fadewell
