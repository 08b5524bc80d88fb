#pragma once

#include "base/Clock.h"
#include "platform/linux/pipewire/Connection.h"
#include "platform/linux/pipewire/LoopTimer.h"

#include <memory>
#include <set>
#include <utility>
#include <vector>

namespace fadewell::pipewire {

/// How long what the server lost is still shown as it was: restarts and changes of a headset's
/// profile are over before anybody needs to know. Nothing wakes up while nothing is frozen.
/// Belongs to the connection's lock.
class FrozenTime final {
public:
    /// Seconds from the loss until it is told.
    static constexpr double duration = 2.0;

    /// Shows something as it was.
    class Owner {
    public:
        virtual ~Owner() = default;
        /// Tells of everything whose deadline has passed. On the loop thread, locked.
        virtual void thaw() = 0;
    };

    FrozenTime(Connection& connection, std::shared_ptr<Clock> clock)
        : connection_(connection)
        , clock_(std::move(clock))
    {}
    ~FrozenTime();
    FrozenTime(const FrozenTime&) = delete;
    FrozenTime& operator=(const FrozenTime&) = delete;

    /// Owners thaw in order of their addition.
    void add(Owner& owner) { owners_.push_back(&owner); }
    void remove(Owner& owner) { std::erase(owners_, &owner); }

    /// Starts to count; the time (of the clock) at which thaw() will be called.
    [[nodiscard]] double start();
    [[nodiscard]] bool isOver(double deadline) const;

    /// Lets the owners thaw what is due, and waits for the rest. Called by the timer.
    void tick();

private:
    void schedule();

    Connection& connection_;
    std::shared_ptr<Clock> clock_;
    std::vector<Owner*> owners_;
    std::set<double> deadlines_;
    std::unique_ptr<LoopTimer> timer_;
};

} // namespace fadewell::pipewire
