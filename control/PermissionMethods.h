#pragma once

#include "control/BusMethod.h"

#include <functional>
#include <vector>

namespace fadewell {

/// Whether other programs' sound may be captured, asked anew at every call. `isAllowed` may be
/// absent, where nobody can be asked.
[[nodiscard]] std::vector<BusMethod> permissionMethods(std::function<bool()> isAllowed);

} // namespace fadewell
