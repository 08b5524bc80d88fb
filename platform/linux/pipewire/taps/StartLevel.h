#pragma once

#include <optional>
#include <string>

namespace fadewell::pipewire {

/// How an app is to sound from its first frame.
struct StartLevel {
    std::string appID;
    double gain = 1;                              ///< 0 to 1, at once
    double duck = 1;                              ///< 0 to 1, along its ramp
    std::optional<std::string> outputDeviceUID{}; ///< absent: where it would play by itself
};

} // namespace fadewell::pipewire
