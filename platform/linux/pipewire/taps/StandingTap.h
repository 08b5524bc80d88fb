#pragma once

#include "audio/AudioTypes.h"
#include "platform/linux/pipewire/taps/StandIn.h"
#include "platform/linux/pipewire/taps/TapStreams.h"

#include <memory>
#include <string>

namespace fadewell::pipewire {

/// Streams without an engine's tap around them: ready for the next app that may not be heard as it
/// comes, or carrying one until the engine's own path takes over.
struct StandingTap {
    AudioObjectID id = 0;             ///< for the router alone; nobody else sees it
    std::string appID;                ///< empty while it is free
    bool isAsleep = false;            ///< costs nothing while other apps play
    std::string output;               ///< node.name it was sent to; empty follows the default
    std::unique_ptr<StandIn> standIn; ///< outlives the streams, whose audio thread calls it
    std::unique_ptr<TapStreams> streams;
};

} // namespace fadewell::pipewire
