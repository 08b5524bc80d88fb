#pragma once

#include "audio/EngineContext.h"
#include "audio/TapEvent.h"
#include "audio/TapRequest.h"
#include "base/Stream.h"

#include <memory>
#include <vector>

namespace fadewell {

/// Turns the model's requests into running audio paths, and keeps them healthy.
class TapManager final : public std::enable_shared_from_this<TapManager> {
public:
    [[nodiscard]] static std::shared_ptr<TapManager> create(EngineContext context);
    ~TapManager();
    TapManager(const TapManager&) = delete;
    TapManager& operator=(const TapManager&) = delete;

    /// Changes of the capture permission; the newest 4 are kept.
    [[nodiscard]] Stream<TapEvent>& events();

    /// Takes the complete wanted list, one request per app. Asynchronous.
    void update(std::vector<TapRequest> requests);

    /// Destroys every tap, aggregate device and I/O procedure before it returns.
    void stopAll();

    /// Destroys taps and aggregates that an earlier run left behind; returns how many. For launch,
    /// before any session exists. [any thread]
    static int removeLeftovers(AudioHardware& hardware);

private:
    // The engine's author fills this in.
};

} // namespace fadewell
