#pragma once

#include "audio/AudioTypes.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace fadewell::pipewire {

/// Hands out object ids above 1, none twice in a run. A key always gets the id that it had before,
/// so that what comes back after a restart of the server is the same object. Belongs to the
/// connection's lock.
class ObjectIDs final {
public:
    /// An id that nothing had before: a tap, an aggregate.
    [[nodiscard]] AudioObjectID next() { return next_++; }

    /// The id of whatever this key names: "device:alsa_output.pci".
    [[nodiscard]] AudioObjectID forKey(std::string_view key)
    {
        const auto found = ids_.find(key);
        return found != ids_.end() ? found->second
                                   : ids_.emplace(std::string(key), next()).first->second;
    }
    [[nodiscard]] AudioObjectID forDevice(std::string_view nodeName)
    {
        return forKey("device:" + std::string(nodeName));
    }
    [[nodiscard]] AudioObjectID forProcess(std::int32_t pid)
    {
        return forKey("process:" + std::to_string(pid));
    }

private:
    AudioObjectID next_ = kAudioObjectSystemObject + 1;
    std::map<std::string, AudioObjectID, std::less<>> ids_;
};

} // namespace fadewell::pipewire
