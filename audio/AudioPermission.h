#pragma once

#include "audio/EngineContext.h"

#include <functional>

namespace fadewell {

/// Whether this program may capture other programs' sound.
struct AudioPermission {
    AudioPermission() = delete;

    /// True when capture is allowed now. A few platform calls. [any thread]
    [[nodiscard]] static bool check(AudioHardware& hardware);

    /// Asks by really reading a tap, silently, and checks once a second on `queue`; calls
    /// `answered` there: true as soon as capture is allowed, false when the time (in seconds) ran
    /// out or nothing could be built. Whatever was built is gone before the answer, and when the
    /// timer is dropped, which happens on `queue` while the request runs.
    [[nodiscard]] static Timer request(const EngineContext& context,
                                       std::shared_ptr<SerialQueue> queue,
                                       double timeout,
                                       std::function<void(bool)> answered);
};

} // namespace fadewell
