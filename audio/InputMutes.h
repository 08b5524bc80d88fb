#pragma once

#include "audio/AudioHardware.h"
#include "base/UserDefaults.h"

#include <cstddef>
#include <optional>
#include <string>

namespace fadewell {

/// The input devices that this program muted, as the user defaults remember them, so that a mute
/// outlives neither this run nor, after a crash, the next one's start. Every change is on disk
/// before it returns. Holds nothing itself. [one thread at a time]
class InputMutes final {
public:
    InputMutes(AudioHardware& hardware, UserDefaults& defaults);

    /// Mutes by the device's switch, else by its volume. Does nothing to a device that is muted
    /// already; false when the device can't be muted.
    [[nodiscard]] bool mute(AudioObjectID device);

    /// Gives back what mute() took.
    void unmute(AudioObjectID device);

    /// Whether somebody else has made a device that mute() muted heard again.
    [[nodiscard]] bool isUndone(AudioObjectID device) const;
    /// Mutes such a device as before; what it goes back to stays.
    void repeat(AudioObjectID device);
    /// Leaves it to whoever undid it.
    void abandon(AudioObjectID device);

    /// Unmutes and forgets every remembered device; those that are not connected are forgotten too.
    /// Returns how many there were.
    std::size_t undoAll();

    /// Below 0 for a device muted by its switch, else the volume it goes back to; absent for one
    /// that is not muted.
    [[nodiscard]] std::optional<double> remembered(AudioObjectID device) const;

private:
    [[nodiscard]] std::optional<std::string> uidOf(AudioObjectID device) const;
    [[nodiscard]] UserDefaults::NumberMap load() const;
    void store(const UserDefaults::NumberMap& devices);
    [[nodiscard]] std::optional<double> silence(AudioObjectID device);
    void undo(AudioObjectID device, double remembered);

    AudioHardware& hardware_;
    UserDefaults& defaults_;
};

} // namespace fadewell
