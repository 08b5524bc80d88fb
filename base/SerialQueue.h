#pragma once

#include "base/Clock.h"
#include "base/ThreadSafety.h"
#include "base/Timer.h"

#include <functional>
#include <memory>
#include <string>

namespace fadewell {

using Task = std::function<void()>;

/// Runs tasks one after another, in order. Everything a service owns is confined to one of these.
///
/// Posting is allowed from any thread. A queue outlives its tasks: what is pending when its last
/// owner lets go is dropped, even when that owner is a task on the queue itself.
class CAPABILITY("queue") SerialQueue {
public:
    virtual ~SerialQueue() = default;

    virtual void async(Task task) = 0;

    /// Runs the task before it returns. Never called on the queue itself, nor towards the main
    /// queue.
    virtual void sync(const Task& task) = 0;

    /// Runs the task once, no earlier than `seconds` from now. At most 0 means as soon as possible.
    [[nodiscard]] virtual Timer after(double seconds, Task task) = 0;

    /// Runs the task after `first` seconds and then every `interval`; each run may be late by
    /// `leeway`.
    [[nodiscard]] virtual Timer every(double first, double interval, double leeway, Task task) = 0;

    [[nodiscard]] virtual Clock& clock() const = 0;

    /// Whether the caller runs on this queue.
    [[nodiscard]] virtual bool isCurrent() const = 0;

    /// Ends the program when called from anywhere else.
    void assertCurrent() const ASSERTS_CAPABILITY(this);
};

/// Makes a service's own queue; the label names its thread.
using QueueFactory = std::function<std::shared_ptr<SerialQueue>(const std::string& label)>;

} // namespace fadewell
