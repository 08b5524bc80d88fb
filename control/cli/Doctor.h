#pragma once

#include "base/Finding.h"
#include "control/cli/Output.h"

#include <functional>
#include <string>
#include <vector>

namespace fadewell::cli {

/// Looks at the machine and the session. Takes up to some seconds.
using Diagnose = std::function<std::vector<Finding>()>;

/// What works here and what doesn't, also when Fadewell doesn't run. `version` is this program's.
[[nodiscard]] Output doctor(const std::string& version, const Diagnose& diagnose);

} // namespace fadewell::cli
