#pragma once

#include "platform/linux/pipewire/Graph.h"
#include "platform/linux/pipewire/LoopTimer.h"
#include "platform/linux/pipewire/taps/CycleKeeper.h"
#include "platform/linux/pipewire/taps/TapStreams.h"

#include <cstdint>
#include <functional>
#include <set>
#include <utility>

namespace fadewell::pipewire {

/// Wakes players that the loss of an output has silenced for ever: those that were caught in a
/// longer cycle although cycles are kept from growing, as CycleKeeper says. One longer cycle has
/// them finish the buffer that they have begun. Belongs to the connection's lock.
class ConverterWaker final {
public:
    using ForEach = CycleKeeper::ForEach;

    ConverterWaker(Graph& graph, CycleKeeper& keeper, ForEach forEach)
        : graph_(graph)
        , keeper_(keeper)
        , forEach_(std::move(forEach))
        , timer_(graph.connection(), [this] { tick(); })
    {}

    /// Streams have lost their output, or the taps of a run that failed: they are watched for some
    /// time.
    void watch();
    void stop() { timer_.setInterval(0); }

private:
    void tick();
    [[nodiscard]] bool isFed(const TapStreams& streams) const;

    Graph& graph_;
    CycleKeeper& keeper_;
    ForEach forEach_;
    LoopTimer timer_;
    std::set<const TapStreams*> starved_; ///< at the last tick; some may have gone
    int ticks_ = 0;                       ///< left
    int longCycles_ = 0;                  ///< times that may still be tried
    bool isLong_ = false;                 ///< somebody's cycle
};

} // namespace fadewell::pipewire
