#pragma once

#include "audio/AudioTypes.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace fadewell {

/// A client of the sound system.
struct SimulatedProcess {
    std::int32_t pid = 0;
    std::optional<std::string> bundleID{}; ///< absent: the property reads as no text
    bool isRunningOutput = false;
    bool isRunningInput = false;
    std::optional<std::vector<AudioObjectID>> outputDevices{}; ///< absent: the default output
    float left = 0;                                            ///< each sample that it plays
    float right = 0;
};

} // namespace fadewell
