#pragma once

#include "base/SerialQueue.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <utility>

namespace fadewell {

/// The heap behind a queue: tasks by due time, equal times in order of posting. Not synchronised.
class TimedTasks final {
public:
    struct Entry {
        Task task;
        double interval = 0;                      ///< 0 for work that runs once
        std::shared_ptr<std::atomic<bool>> alive; ///< false once cancelled; absent: never cancelled
    };

    /// Due time, then order of posting.
    using Key = std::pair<double, std::uint64_t>;

    /// Heaps that share a counter share one order of posting.
    explicit TimedTasks(std::shared_ptr<std::uint64_t> counter = std::make_shared<std::uint64_t>(0))
        : counter_(std::move(counter))
    {}

    void add(double due, Entry entry);

    /// The key of the earliest live entry.
    [[nodiscard]] std::optional<Key> next();

    [[nodiscard]] std::size_t size();

    /// Takes the earliest live entry that is due; a repeating one is put back for its next run,
    /// skipping runs that were missed.
    [[nodiscard]] std::optional<Entry> takeDue(double now);

private:
    void dropDead();

    std::shared_ptr<std::uint64_t> counter_;
    std::map<Key, Entry> entries_;
};

} // namespace fadewell
