#pragma once

#include "base/SerialQueue.h"

#include <memory>
#include <string>
#include <thread>

namespace fadewell {

/// A SerialQueue on a thread of its own, which sleeps without wake-ups while nothing is due.
///
/// Signals are blocked on the thread, so that they reach the main thread. When the last reference
/// dies the running task ends, what is pending is dropped and the thread is joined, or, where the
/// last reference dies on the thread itself, left to end by itself.
class ThreadQueue final : public SerialQueue {
public:
    ThreadQueue(const std::string& label, std::shared_ptr<Clock> clock);
    ~ThreadQueue() override;
    ThreadQueue(const ThreadQueue&) = delete;
    ThreadQueue& operator=(const ThreadQueue&) = delete;

    void async(Task task) override;
    void sync(const Task& task) override;
    [[nodiscard]] Timer after(double seconds, Task task) override;
    [[nodiscard]] Timer every(double first, double interval, double leeway, Task task) override;
    [[nodiscard]] Clock& clock() const override;
    [[nodiscard]] bool isCurrent() const override;

private:
    struct State;
    std::shared_ptr<State> state_;
    std::thread thread_;
};

} // namespace fadewell
