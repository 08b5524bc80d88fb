#pragma once

#include "control/BusMethod.h"

#include <functional>
#include <string>
#include <vector>

namespace fadewell {

/// Everything that helps to find a fault, as one text. `text` may be absent, where nothing is
/// gathered.
[[nodiscard]] std::vector<BusMethod>
diagnosticsMethods(std::function<std::string(bool withNames)> text);

} // namespace fadewell
