#pragma once

#include "audio/AudioTypes.h"

#include <optional>
#include <string>
#include <vector>

namespace fadewell {

/// What the model wants for one app.
struct TapRequest {
    std::string appID;
    std::vector<AudioObjectID> processObjectIDs;
    double gain = 1.0; ///< 0 while muted
    double duck = 1.0; ///< call-mode factor; 1 is not lowered
    bool isPlaying = false;
    std::vector<AudioObjectID> outputDeviceIDs;    ///< where its processes play now
    std::optional<std::string> preferredOutputUID; ///< what the user chose

    bool operator==(const TapRequest&) const = default;
};

} // namespace fadewell
