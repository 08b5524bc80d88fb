#pragma once

#include "audio/Tappability.h"
#include "platform/linux/pipewire/ServerDescription.h"

#include <optional>
#include <string>
#include <vector>

namespace fadewell {

/// What was found out about the sound of a session.
struct SoundFacts {
    std::string error;              ///< why there is no connection; empty when there is one
    bool isPulseAudioThere = false; ///< a PulseAudio server of the old kind
    ServerDescription server{};
    bool isPermitted = true;
    std::optional<std::string> output{};     ///< the default one's name
    std::optional<std::string> microphone{}; ///< the default one's name
    bool canMuteMicrophone = false;
    std::vector<UntappableProcess> untappable{};
};

} // namespace fadewell
