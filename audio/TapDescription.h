#pragma once

#include "audio/AudioTypes.h"

#include <string>
#include <utility>
#include <vector>

namespace fadewell {

/// Whether the tapped processes are still heard directly.
enum class TapMuteBehavior {
    unmuted = 0,
    muted = 1,
    mutedWhenTapped = 2
};

/// What a process tap captures, and how.
struct TapDescription {
    /// The listed processes, mixed down to stereo.
    [[nodiscard]] static TapDescription stereoMixdownOfProcesses(std::vector<AudioObjectID> listed)
    {
        TapDescription description;
        description.processes = std::move(listed);
        return description;
    }

    /// Every process but the listed ones, mixed down to stereo.
    [[nodiscard]] static TapDescription
    stereoGlobalTapButExcludeProcesses(std::vector<AudioObjectID> listed)
    {
        TapDescription description;
        description.processes = std::move(listed);
        description.isExclusive = true;
        return description;
    }

    std::string uuid{}; ///< empty: the platform chooses one
    std::string name{};
    std::vector<AudioObjectID> processes{};
    bool isExclusive = false; ///< `processes` are the ones left out
    bool isPrivate = false;
    TapMuteBehavior muteBehavior = TapMuteBehavior::unmuted;

    bool operator==(const TapDescription&) const = default;
};

} // namespace fadewell
