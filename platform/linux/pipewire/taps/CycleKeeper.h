#pragma once

#include "platform/linux/pipewire/LoopTimer.h"
#include "platform/linux/pipewire/taps/TapStreams.h"

#include <functional>
#include <utility>

namespace fadewell::pipewire {

/// Keeps cycles from growing while streams are on the move.
///
/// When an output comes or goes, its streams leave one after another, and the cycles of those that
/// are left may be longer for a moment. A player still reads that length for one cycle after it
/// has moved. It begins a buffer then, of which its sample converter holds more than the cycles at
/// the new output take: it falls silent, or its library counts below zero and the player writes
/// past the end of a buffer. So cycles may only become shorter until links have been calm for a
/// while, and as long as they like then. Belongs to the connection's lock.
class CycleKeeper final {
public:
    /// Calls what it is given for all streams that there are.
    using ForEach = std::function<void(const std::function<void(TapStreams&)>&)>;

    CycleKeeper(Connection& connection, ForEach forEach)
        : forEach_(std::move(forEach))
        , timer_(connection, [this] { tick(); })
    {}

    /// Streams may be on the move.
    void linkChanged();
    /// Cycles may be as long as somebody wants them now, for some time at least.
    void letGo();
    void stop() { timer_.setInterval(0); }

private:
    enum class Next {
        keep,
        letGo,
        keepForGood
    };

    void tick();
    void keep();
    void schedule(Next next, double seconds);

    ForEach forEach_;
    LoopTimer timer_;
    Next next_ = Next::keep;
};

} // namespace fadewell::pipewire
