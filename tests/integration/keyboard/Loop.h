#pragma once

#include "base/VirtualTime.h"
#include "platform/linux/hotkeys/DescriptorWatch.h"
#include "platform/linux/hotkeys/Listeners.h"

#include <chrono>
#include <memory>
#include <optional>
#include <poll.h>
#include <utility>

namespace fadewell::integration {

/// A main loop that turns when the test says so, and counts how often something woke it.
class Loop {
public:
    [[nodiscard]] const std::shared_ptr<SerialQueue>& queue() const { return queue_; }

    /// For one descriptor at a time.
    [[nodiscard]] DescriptorWatch watch()
    {
        return [this](int descriptor, std::function<void()> readable) {
            descriptor_ = descriptor;
            return readers_.add(std::move(readable));
        };
    }

    /// Turns until the condition holds; false when it doesn't in time.
    template <class Condition>
    [[nodiscard]] bool until(Condition isTrue,
                             std::chrono::milliseconds limit = std::chrono::seconds(5))
    {
        const auto end = std::chrono::steady_clock::now() + limit;
        while (!isTrue()) {
            if (std::chrono::steady_clock::now() >= end) {
                return false;
            }
            turn();
        }
        return true;
    }

    /// Turns for as long as that takes.
    void turnFor(std::chrono::milliseconds duration)
    {
        static_cast<void>(until([] { return false; }, duration));
    }

    void run(const Task& task)
    {
        queue_->async(task);
        time_->run();
    }

    int wakeUps = 0;

private:
    void turn()
    {
        pollfd descriptor{descriptor_, POLLIN, 0};
        if (poll(&descriptor, 1, 5) == 1) {
            ++wakeUps;
            queue_->async([this] { readers_.callAll(); });
        }
        time_->run();
    }

    std::shared_ptr<VirtualTime> time_ = VirtualTime::create();
    std::shared_ptr<SerialQueue> queue_ = time_->makeQueue();
    Listeners<std::function<void()>> readers_;
    int descriptor_ = -1;
};

} // namespace fadewell::integration
