#pragma once

#include "audio/AggregateDescription.h"
#include "audio/AudioTypes.h"
#include "audio/TapDescription.h"
#include "platform/linux/pipewire/taps/StandIn.h"
#include "platform/linux/pipewire/taps/TapRender.h"
#include "platform/linux/pipewire/taps/TapStreams.h"

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>

namespace fadewell::pipewire {

/// A process tap: who is tapped, and the streams that their sound goes through.
struct TapObject {
    AudioObjectID id = 0;
    TapDescription description;
    std::unique_ptr<StandIn> standIn;    ///< outlives the streams, whose audio thread may call it
    std::unique_ptr<TapStreams> streams; ///< none until an aggregate uses the tap
    std::string output;                  ///< node.name that the streams play on

    /// The procedure whose turn it is; 0 when there is none.
    IOProcID activeProcedure = 0;

    /// Streams that were already heard directly when the procedure was armed: taken over by a start
    /// or in their next pause, whichever comes first.
    std::set<std::uint32_t> untouched;

    /// Uptime in seconds until which the apps' sound may wait for the tap to run.
    double runsBy = 0;

    /// Faded out for a move: to be heard again as soon as it has left the old output.
    bool isLeaving = false;

    // What the heartbeat saw last.
    std::uint64_t lastCalls = 0;
    int silentTicks = 0;

    /// Muting taps take the apps' streams; the others only listen.
    [[nodiscard]] bool takesStreams() const
    {
        return description.muteBehavior != TapMuteBehavior::unmuted && !description.isExclusive;
    }
};

/// An I/O procedure and the aggregate that it was created on.
struct ProcedureObject {
    IOProcID id = 0;
    AudioObjectID aggregate = 0;
    TapRender::Procedure procedure;
};

/// An aggregate device: a route of one tap to one output.
struct AggregateObject {
    AudioObjectID id = 0;
    AudioObjectID tap = 0;
    AggregateDescription description;
};

} // namespace fadewell::pipewire
