#pragma once

#include <functional>
#include <utility>

namespace fadewell {

/// Ends something when it is destroyed. Owned by the listener; declared last so that it dies first.
class [[nodiscard]] Subscription final {
public:
    Subscription() = default;
    explicit Subscription(std::function<void()> end)
        : end_(std::move(end))
    {}
    Subscription(Subscription&& other) noexcept
        : end_(std::exchange(other.end_, nullptr))
    {}
    Subscription& operator=(Subscription&& other) noexcept
    {
        if (this != &other) {
            cancel();
            end_ = std::exchange(other.end_, nullptr);
        }
        return *this;
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { cancel(); }

    /// Ends it now; later calls do nothing.
    void cancel()
    {
        if (auto end = std::exchange(end_, nullptr)) {
            end();
        }
    }

private:
    std::function<void()> end_;
};

} // namespace fadewell
