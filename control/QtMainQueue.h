#pragma once

#include "base/SerialQueue.h"

#include <memory>

namespace fadewell {

/// The main queue: tasks run by the event loop of the thread that made it, which must have a
/// QCoreApplication.
///
/// Tasks that are due run in one batch; what they post runs after the loop had a look at its other
/// events, so that a busy engine can't starve signals or the bus. Nothing wakes up while nothing is
/// due. Tasks pending when the last reference dies are dropped.
class QtMainQueue final : public SerialQueue {
public:
    explicit QtMainQueue(std::shared_ptr<Clock> clock);
    ~QtMainQueue() override;
    QtMainQueue(const QtMainQueue&) = delete;
    QtMainQueue& operator=(const QtMainQueue&) = delete;

    void async(Task task) override;

    /// Nothing may wait for the main queue: ends the program.
    void sync(const Task& task) override;
    [[nodiscard]] Timer after(double seconds, Task task) override;
    [[nodiscard]] Timer every(double first, double interval, double leeway, Task task) override;
    [[nodiscard]] Clock& clock() const override;
    [[nodiscard]] bool isCurrent() const override;

private:
    class Pump;

    std::shared_ptr<Clock> clock_;
    Pump* pump_; ///< deleted on its own thread, later when that isn't this one
};

} // namespace fadewell
