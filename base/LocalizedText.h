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

/// Each word begins with a capital letter, where the user's language has such.
[[nodiscard]] std::string localizedCapitalized(std::string_view text);

/// Names joined as the user's locale lists them: "A, B, and C" in English.
[[nodiscard]] std::string localizedList(const std::vector<std::string>& names);

/// The same in the narrowest way: "A, B, C" in English.
[[nodiscard]] std::string localizedNarrowList(const std::vector<std::string>& names);

} // namespace fadewell
