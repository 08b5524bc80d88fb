#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace fadewell {

/// One app as the bus and the command line show it.
struct AppEntry {
    std::string id{};
    std::string name{};
    bool isPlaying = false;
    bool isUsingMicrophone = false;
    double volume = 1.0; ///< 0 to 1; kept while muted
    bool isMuted = false;
    std::optional<std::string> outputDeviceUID{}; ///< absent: follows the system's output
    std::optional<std::string> outputDeviceName{};
    std::optional<std::string> callStatus{}; ///< "inCall" or "lowered"
    std::optional<std::string> bundleID{};   ///< absent for what only has a process identifier
    std::vector<std::int32_t> pids{};        ///< empty while it doesn't run
    bool isTappable = true;
    /// "unmanaged", "passthrough", "exclusive" or "pinned".
    std::optional<std::string> untappableReason{};

    bool operator==(const AppEntry&) const = default;
};

} // namespace fadewell
