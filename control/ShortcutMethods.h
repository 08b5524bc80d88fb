#pragma once

#include "app/MixerModel.h"
#include "control/BusMethod.h"

#include <memory>
#include <vector>

namespace fadewell {

/// The methods of the bus interface that do what the keyboard shortcuts do, for desktops whose own
/// settings are to start them. [main queue]
[[nodiscard]] std::vector<BusMethod> shortcutMethods(std::shared_ptr<MixerModel> model);

} // namespace fadewell
