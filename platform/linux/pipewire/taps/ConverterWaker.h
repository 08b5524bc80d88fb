#pragma once

#include "platform/linux/pipewire/Graph.h"
#include "platform/linux/pipewire/LoopTimer.h"
#include "platform/linux/pipewire/taps/TapStreams.h"

#include <cstdint>
#include <functional>
#include <set>
#include <utility>

namespace fadewell::pipewire {

/// Wakes players that the loss of an output has silenced for ever.
///
/// For a moment the streams run without an output, in cycles that may be longer than before. A
/// player that was caught short in one of them has begun a buffer, of which its sample converter
/// holds more than the next output's cycles take; then it never hands on anything again. One longer
/// cycle has it finish. Belongs to the connection's lock.
class ConverterWaker final {
public:
    /// Calls what it is given for all streams that there are.
    using ForEach = std::function<void(const std::function<void(TapStreams&)>&)>;

    ConverterWaker(Graph& graph, ForEach forEach)
        : graph_(graph)
        , forEach_(std::move(forEach))
        , timer_(graph.connection(), [this] { tick(); })
    {}

    /// Streams have lost their output: they are watched for some time.
    void outputLost();
    void stop() { timer_.setInterval(0); }

private:
    void tick();
    [[nodiscard]] bool isFed(const TapStreams& streams) const;
    [[nodiscard]] std::uint32_t longestCycle() const;

    Graph& graph_;
    ForEach forEach_;
    LoopTimer timer_;
    std::set<const TapStreams*> starved_; ///< at the last tick; some may have gone
    int ticks_ = 0;                       ///< left
    int longCycles_ = 0;                  ///< times that may still be tried
    bool isLong_ = false;                 ///< somebody's cycle
};

} // namespace fadewell::pipewire
