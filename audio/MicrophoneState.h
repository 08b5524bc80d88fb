#pragma once

#include <optional>
#include <string>

namespace fadewell {

/// The default input device at one moment.
struct MicrophoneState {
    std::optional<std::string> deviceName;
    std::optional<double>
        volume; ///< 0 to 1, the remembered one while muted by volume; absent: not settable
    bool isMuted = false; ///< by this program
    bool canMute = false;

    bool operator==(const MicrophoneState&) const = default;
};

} // namespace fadewell
