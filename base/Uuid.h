#pragma once

#include <string>

namespace fadewell {

/// A new random UUID as 36 upper-case characters. [any thread]
[[nodiscard]] std::string makeUUID();

} // namespace fadewell
