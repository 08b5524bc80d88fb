#pragma once

#include "audio/AudioTypes.h"
#include "platform/linux/pipewire/Graph.h"
#include "platform/linux/pipewire/taps/TapRouter.h"
#include "platform/linux/pipewire/taps/TapStreams.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace fadewell::pipewire {

/// Taps that have ended for their owner but whose apps still play through them: each passes the
/// sound on, coming back to full level, until its apps have moved out. Belongs to the connection's
/// lock.
class RetiredTaps final {
public:
    /// `isQuietMoment` tells whether links may change now; if not, tick() is called when they may.
    using IsQuietMoment = std::function<bool(const TapStreams&)>;

    RetiredTaps(Graph& graph, TapRouter& router, IsQuietMoment isQuietMoment)
        : graph_(graph)
        , router_(router)
        , isQuietMoment_(std::move(isQuietMoment))
    {}

    /// Takes streams over that no procedure uses any more, and whose apps are to go back. `now` is
    /// in seconds of the monotonic clock, here and below.
    void add(AudioObjectID tap, std::unique_ptr<TapStreams> streams, double now);

    /// Takes streams over whose apps go to another tap by themselves.
    void addReplaced(std::unique_ptr<TapStreams> streams, double now);

    /// Does what is due. To be called every `interval` seconds while there are any.
    void tick(double now);
    [[nodiscard]] bool isEmpty() const { return retired_.empty(); }

    /// Drops all at once: the server has gone, and what outlives it would block it.
    void clear() { retired_.clear(); }

    static constexpr double interval = 0.01;

private:
    struct Retired {
        AudioObjectID tap = 0;
        std::unique_ptr<TapStreams> streams;
        double releaseAt = 0;
        double endAt = 0;
        bool isReleased = false;
    };

    void release(Retired& retired);
    [[nodiscard]] bool isLeft(const Retired& retired) const;

    Graph& graph_;
    TapRouter& router_;
    IsQuietMoment isQuietMoment_;
    std::vector<Retired> retired_;
};

} // namespace fadewell::pipewire
