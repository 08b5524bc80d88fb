#pragma once

#include "app/LoginItem.h"
#include "control/BusMethod.h"

#include <memory>
#include <vector>

namespace fadewell {

/// Whether the program starts with the session; `item` may be absent, where that can't be chosen.
[[nodiscard]] std::vector<BusMethod> loginItemMethods(std::shared_ptr<LoginItem> item);

} // namespace fadewell
