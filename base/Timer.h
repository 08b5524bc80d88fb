#pragma once

#include <functional>
#include <utility>

namespace fadewell {

/// Delayed or repeating work on a SerialQueue; cancels it when destroyed. Cancelled on its queue,
/// the work never runs again; cancelled elsewhere, a run that already began ends first or not.
class [[nodiscard]] Timer final {
public:
    Timer() = default;
    explicit Timer(std::function<void()> cancel)
        : cancel_(std::move(cancel))
    {}
    Timer(Timer&& other) noexcept
        : cancel_(std::exchange(other.cancel_, nullptr))
    {}
    Timer& operator=(Timer&& other) noexcept
    {
        if (this != &other) {
            cancel();
            cancel_ = std::exchange(other.cancel_, nullptr);
        }
        return *this;
    }
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    ~Timer() { cancel(); }

    void cancel()
    {
        if (auto cancel = std::exchange(cancel_, nullptr)) {
            cancel();
        }
    }

    /// Lets the work run without an owner.
    void detach() { cancel_ = nullptr; }

    /// Whether it was given work and neither cancelled nor detached; true after the work ran too.
    explicit operator bool() const { return static_cast<bool>(cancel_); }

private:
    std::function<void()> cancel_;
};

} // namespace fadewell
