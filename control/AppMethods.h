#pragma once

#include "app/MixerModel.h"
#include "control/AppCatalog.h"
#include "control/BusMethod.h"

#include <memory>
#include <vector>

namespace fadewell {

/// The methods of the bus interface about apps and outputs. [main queue]
[[nodiscard]] std::vector<BusMethod> appMethods(std::shared_ptr<MixerModel> model,
                                                std::shared_ptr<AppCatalog> catalog);

} // namespace fadewell
