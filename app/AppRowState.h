#pragma once

#include "app/AppIcon.h"
#include "core/AppAudioSettings.h"

#include <cstdint>
#include <optional>
#include <string>

namespace fadewell {

/// How call mode treats an app; absent where it doesn't concern it.
enum class CallStatus {
    inCall,
    lowered
};

/// One row of the mixer.
struct AppRowState {
    std::string id; ///< app identifier
    std::string name;
    AppIcon icon;
    bool isPlaying = false;
    bool isUsingMicrophone = false;
    AppAudioSettings settings;
    std::optional<std::uint32_t> ownOutputDeviceID; ///< where it plays by itself
    std::optional<CallStatus> callStatus;

    bool operator==(const AppRowState&) const = default;
};

} // namespace fadewell
