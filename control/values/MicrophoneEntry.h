#pragma once

#include "control/values/MicrophoneUseEntry.h"

#include <optional>
#include <string>
#include <vector>

namespace fadewell {

/// The default input as the bus and the command line show it.
struct MicrophoneEntry {
    std::optional<std::string> deviceName{};
    std::optional<double> volume{}; ///< 0 to 1; absent: can't be set
    bool isMuted = false;
    bool canMute = false;
    std::vector<std::string> users{};       ///< names of the apps that use it now
    std::vector<MicrophoneUseEntry> uses{}; ///< the same apps, and since when

    bool operator==(const MicrophoneEntry&) const = default;
};

} // namespace fadewell
