#pragma once

#include "app/MixerModel.h"
#include "control/BusMethod.h"

#include <memory>
#include <vector>

namespace fadewell {

/// The methods of the bus interface about the microphone. [main queue]
[[nodiscard]] std::vector<BusMethod> microphoneMethods(std::shared_ptr<MixerModel> model);

} // namespace fadewell
