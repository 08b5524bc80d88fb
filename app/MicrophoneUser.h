#pragma once

#include <chrono>
#include <string>

namespace fadewell {

/// An app that uses the microphone.
struct MicrophoneUser {
    std::string id; ///< app identifier
    std::string name;
    std::chrono::sys_seconds since; ///< when that was first seen, by the wall's clock

    bool operator==(const MicrophoneUser&) const = default;
};

} // namespace fadewell
