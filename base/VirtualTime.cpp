#include "base/VirtualTime.h"

#include "base/TimedTasks.h"

#include <algorithm>
#include <utility>

namespace fadewell {

/// A queue on virtual time; runs only while the time is run or advanced.
class VirtualQueue final : public SerialQueue, public std::enable_shared_from_this<VirtualQueue> {
public:
    VirtualQueue(std::shared_ptr<VirtualTime> time, std::shared_ptr<std::uint64_t> counter)
        : time_(std::move(time))
        , tasks_(std::move(counter))
    {}

    void async(Task task) override { tasks_.add(time_->uptime(), {std::move(task), 0, nullptr}); }

    void sync(const Task& task) override
    {
        // What was posted before runs first, as it would on a thread.
        while (runFirst(time_->uptime())) {
        }
        runGuarded(task);
    }

    [[nodiscard]] Timer after(double seconds, Task task) override
    {
        return add(seconds, 0, std::move(task));
    }

    [[nodiscard]] Timer every(double first, double interval, double /*leeway*/, Task task) override
    {
        return add(first, interval, std::move(task));
    }

    [[nodiscard]] Clock& clock() const override { return *time_; }
    [[nodiscard]] bool isCurrent() const override { return isRunning_; }
    [[nodiscard]] TimedTasks& tasks() { return tasks_; }

    bool runFirst(double until)
    {
        auto entry = isRunning_ ? std::nullopt : tasks_.takeDue(until);
        if (entry) {
            runGuarded(entry->task);
        }
        return entry.has_value();
    }

private:
    Timer add(double seconds, double interval, Task task)
    {
        auto alive = std::make_shared<std::atomic<bool>>(true);
        tasks_.add(time_->uptime() + std::max(seconds, 0.0), {std::move(task), interval, alive});
        return Timer([alive] { *alive = false; });
    }

    void runGuarded(const Task& task)
    {
        const auto self = shared_from_this(); // The task may drop the last owner.
        isRunning_ = true;
        task();
        isRunning_ = false;
    }

    std::shared_ptr<VirtualTime> time_;
    TimedTasks tasks_;
    bool isRunning_ = false;
};

std::shared_ptr<VirtualTime> VirtualTime::create(double start)
{
    return std::shared_ptr<VirtualTime>(new VirtualTime(start));
}

std::shared_ptr<SerialQueue> VirtualTime::makeQueue()
{
    auto queue = std::make_shared<VirtualQueue>(shared_from_this(), counter_);
    queues_.push_back(queue);
    return queue;
}

QueueFactory VirtualTime::queueFactory()
{
    return [time = shared_from_this()](const std::string&) {
        return time->makeQueue();
    };
}

void VirtualTime::advance(double seconds)
{
    const double until = now_ + std::max(seconds, 0.0);
    while (const auto queue = nextQueue(until)) {
        now_ = std::max(now_, queue->tasks().next()->first);
        queue->runFirst(now_);
    }
    now_ = std::max(now_, until);
}

std::size_t VirtualTime::pendingTasks() const
{
    std::size_t count = 0;
    for (const auto& weak : queues_) {
        if (const auto queue = weak.lock()) {
            count += queue->tasks().size();
        }
    }
    return count;
}

std::shared_ptr<VirtualQueue> VirtualTime::nextQueue(double until)
{
    std::shared_ptr<VirtualQueue> best;
    std::erase_if(queues_, [](const auto& weak) { return weak.expired(); });
    for (const auto& weak : queues_) {
        const auto queue = weak.lock();
        if (!queue || queue->isCurrent()) {
            continue;
        }
        const auto key = queue->tasks().next();
        if (key && key->first <= until && (!best || *key < *best->tasks().next())) {
            best = queue;
        }
    }
    return best;
}

} // namespace fadewell
