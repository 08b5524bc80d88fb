#pragma once

#include "app/GatherDiagnostics.h"
#include "control/BusMethod.h"

#include <vector>

namespace fadewell {

/// Everything that helps to find a fault, as one text. `gather` may be absent, where nothing is
/// gathered.
[[nodiscard]] std::vector<BusMethod> diagnosticsMethods(GatherDiagnostics gather);

} // namespace fadewell
