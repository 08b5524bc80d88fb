#pragma once

#include "core/AudioApp.h"
#include "core/AudioProcess.h"
#include "core/RunningApp.h"

#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace fadewell {

/// Turns audio processes and running applications into the apps of the mixer. Pure and
/// deterministic.
struct AppGrouper {
    AppGrouper() = delete;

    /// System components that play incidental sounds and are never shown.
    static const std::set<std::string>& ignoredBundleIDs();

    /// The apps that own `processes`, sorted by identifier (code-point order).
    ///
    /// A process nobody owns, one owned by an ignored or excluded application and one whose owner
    /// is background-only is left out.
    [[nodiscard]] static std::vector<AudioApp> group(std::span<const AudioProcess> processes,
                                                     std::span<const RunningApp> runningApps,
                                                     const std::set<std::string>& ignoredBundleIDs,
                                                     const std::set<std::int32_t>& excludedPIDs);
};

} // namespace fadewell
