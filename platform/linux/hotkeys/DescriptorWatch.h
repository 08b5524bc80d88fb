#pragma once

#include "base/Subscription.h"

#include <functional>

namespace fadewell {

/// Calls `readable` on the main queue whenever there is something to read, until the subscription
/// dies. How the program's main loop does that is for `main/` to know.
using DescriptorWatch = std::function<Subscription(int descriptor, std::function<void()> readable)>;

} // namespace fadewell
