#pragma once

#include <optional>
#include <string>
#include <vector>

namespace fadewell {

/// Call mode and its settings as the bus and the command line show them.
struct CallModeEntry {
    bool isActive = false;
    bool isDetected = false;
    std::optional<bool> override_{}; ///< the user's choice; absent: follows detection
    bool isAutomatic = true;
    double level = 0.2;                      ///< what other apps are lowered to, 0 to 1
    std::vector<std::string> excludedApps{}; ///< identifiers
    std::vector<std::string> names{};        ///< the apps in the call

    bool operator==(const CallModeEntry&) const = default;
};

} // namespace fadewell
