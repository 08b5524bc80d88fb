#pragma once

#include "base/Finding.h"

#include <vector>

namespace fadewell {

/// Looks at this machine and session, whether or not Fadewell runs. Changes nothing; takes up to
/// some seconds where a server doesn't answer. [any thread]
[[nodiscard]] std::vector<Finding> diagnose();

} // namespace fadewell
