#pragma once

#include "core/OutputDevice.h"

#include <optional>
#include <string>
#include <vector>

namespace fadewell {

/// The output devices at one moment.
struct DeviceSnapshot {
    std::vector<OutputDevice> outputs;           ///< sorted by name
    std::optional<std::string> defaultOutputUID; ///< may name a device that is not among `outputs`

    bool operator==(const DeviceSnapshot&) const = default;
};

} // namespace fadewell
