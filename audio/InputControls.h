#pragma once

#include "audio/AudioHardware.h"

#include <optional>
#include <vector>

namespace fadewell {

// Volume and mute switch of an input device. Writes ignore their status. [any thread]

/// Whether it has a mute switch that can be operated.
[[nodiscard]] bool canUseMuteProperty(AudioHardware& hardware, AudioObjectID device);
void writeMute(AudioHardware& hardware, AudioObjectID device, bool isMuted);
/// What the switch says; absent without one.
[[nodiscard]] std::optional<bool> isMuted(AudioHardware& hardware, AudioObjectID device);

/// The elements that hold its volume: the main one, else those of channels 1 and 2 that do.
[[nodiscard]] std::vector<AudioObjectPropertyElement> volumeElements(AudioHardware& hardware,
                                                                     AudioObjectID device);
[[nodiscard]] bool hasSettableVolume(AudioHardware& hardware, AudioObjectID device);

/// The volume of the first element, 0 to 1.
[[nodiscard]] std::optional<double> currentVolume(AudioHardware& hardware, AudioObjectID device);

/// Writes all elements.
void writeVolume(AudioHardware& hardware, AudioObjectID device, double volume);

} // namespace fadewell
