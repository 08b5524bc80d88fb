#pragma once

#include <functional>
#include <memory>

namespace fadewell {

/// Has an object destroyed here and now: a queue's thread that still works on a task with it would
/// otherwise destroy it later, and be cut off by the end of the program.
class LastOwner final {
public:
    /// `pause` lets others go on for about a millisecond.
    explicit LastOwner(std::shared_ptr<const void> object, std::function<void()> pause = rest);
    /// Waits until nobody else owns the object, three seconds at most; then the log tells.
    ~LastOwner();
    LastOwner(const LastOwner&) = delete;
    LastOwner& operator=(const LastOwner&) = delete;

private:
    static constexpr int mostPauses = 3000;

    static void rest();

    std::shared_ptr<const void> object_;
    std::function<void()> pause_;
};

} // namespace fadewell
