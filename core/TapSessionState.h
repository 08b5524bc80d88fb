#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace fadewell {

/// What an existing tap session has.
struct TapSessionState {
    std::vector<std::uint32_t> processObjectIDs;
    std::string outputDeviceUID; ///< empty when it has no output
    double gain = 1.0;
    double duck = 1.0;
    bool isRunning = false;
    std::optional<double>
        unitySince; ///< when gain and duck both became 1; absent while they are not

    bool operator==(const TapSessionState&) const = default;
};

} // namespace fadewell
