#pragma once

#include "base/SerialQueue.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace fadewell {

class VirtualQueue;

/// A clock that stands still until it is advanced, and the queues that run on it.
///
/// Everything happens on the calling thread, by due time, then by order of posting: the same
/// program gives the same run every time. A task that sleeps lets the other queues run meanwhile,
/// as a blocked thread would. For tests and previews.
class VirtualTime final : public Clock, public std::enable_shared_from_this<VirtualTime> {
public:
    [[nodiscard]] static std::shared_ptr<VirtualTime> create(double start = 1000.0);

    [[nodiscard]] std::shared_ptr<SerialQueue> makeQueue();
    [[nodiscard]] QueueFactory queueFactory();

    /// Runs everything that is due now, including what that posts.
    void run() { advance(0); }

    /// Moves the clock forward by `seconds`, running each task at its due time.
    void advance(double seconds);

    /// The number of tasks that wait, now or later: 0 means that nothing will ever wake up.
    [[nodiscard]] std::size_t pendingTasks() const;

    [[nodiscard]] double uptime() const override { return now_; }
    void sleep(double seconds) override { advance(seconds); }

private:
    explicit VirtualTime(double start)
        : now_(start)
        , counter_(std::make_shared<std::uint64_t>(0))
    {}

    /// The idle queue with the earliest work due by `until`, if any.
    [[nodiscard]] std::shared_ptr<VirtualQueue> nextQueue(double until);

    double now_;
    std::shared_ptr<std::uint64_t> counter_;
    std::vector<std::weak_ptr<VirtualQueue>> queues_;
};

} // namespace fadewell
