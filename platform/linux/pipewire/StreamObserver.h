#pragma once

#include "audio/AudioTypes.h"

#include <cstdint>

namespace fadewell::pipewire {

/// Hears of the playing streams of processes that can be routed elsewhere. Called on the loop
/// thread with the lock held, after the tables are up to date; `node` is the stream's id in the
/// graph.
class StreamObserver {
public:
    virtual ~StreamObserver() = default;

    /// At once when the server announces the stream of a known process: its own description, state
    /// and formats may still be to come.
    virtual void streamAppeared(AudioObjectID process, std::uint32_t node) = 0;

    /// Its state or description changed.
    virtual void streamChanged(AudioObjectID process, std::uint32_t node) = 0;

    /// It went, or turned out to be nothing that can be routed.
    virtual void streamGone(AudioObjectID process, std::uint32_t node) = 0;
};

} // namespace fadewell::pipewire
