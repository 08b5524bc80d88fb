#pragma once

#include "platform/linux/pipewire/GraphObjects.h"

#include <optional>
#include <utility>

namespace fadewell::pipewire {

/// Decides for one microphone what the session manager keeps as the user's own choice: a volume,
/// but never a mute of ours, nor anything while one lasts.
class RouteKeeping final {
public:
    /// Whether the route is to be saved with what is written to it; `isSaved` tells whether it is
    /// now.
    [[nodiscard]] bool isToBeSaved(bool isSaved, const NodeVolume& written)
    {
        if (written.hasMute && written.isMuted) {
            wasSaved_ = wasSaved_.value_or(isSaved);
            return false;
        }
        if (written.hasMute) {
            return std::exchange(wasSaved_, std::nullopt).value_or(isSaved);
        }
        return !wasSaved_;
    }

private:
    std::optional<bool> wasSaved_; ///< before the mute that lasts
};

} // namespace fadewell::pipewire
