#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace fadewell {

/// What one app should get.
struct TapTarget {
    std::string appID;
    std::vector<std::uint32_t> processObjectIDs;
    double gain = 1.0; ///< 1 leaves the sound unchanged
    double duck = 1.0; ///< call-mode factor; 1 is not lowered
    bool isPlaying = false;
    std::string outputDeviceUID; ///< where its sound must be played
    bool isRerouted = false;     ///< chosen by the user, and not where it would play by itself

    bool operator==(const TapTarget&) const = default;
};

} // namespace fadewell
