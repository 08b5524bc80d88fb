#pragma once

#include "audio/AudioTypes.h"
#include "platform/simulated/PropertyTable.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace fadewell {

/// A device that is plugged in. An absent member is a property that the device doesn't have.
struct SimulatedDevice {
    struct Volume {
        float value = 1;
        bool isSettable = true;
    };
    struct Mute {
        bool isOn = false;
        bool isSettable = true;
    };

    std::optional<std::string> uid{};
    std::optional<std::string> name{};
    std::optional<std::uint32_t> transport = fourCharCode("bltn");
    std::uint32_t outputStreams = 1;
    std::uint32_t inputStreams = 0;
    std::uint32_t outputChannels = 2; ///< of all its output streams together
    std::optional<bool> isHidden = false;
    std::optional<std::uint32_t> dataSource{};
    bool isAlive = true;
    double sampleRate = 48000;
    std::map<AudioObjectPropertyElement, Volume> inputVolume{};
    std::map<AudioObjectPropertyElement, Mute> inputMute{};
};

/// Everything but the stream lists, whose ids the sound system hands out.
[[nodiscard]] PropertyTable propertiesOf(const SimulatedDevice& device);

} // namespace fadewell
