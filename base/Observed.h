#pragma once

#include "base/Subscription.h"

#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace fadewell {

/// A value that tells its observers when it really changes. Confined to one queue.
template <class T>
class Observed final {
public:
    Observed() = default;
    explicit Observed(T value)
        : value_(std::move(value))
    {}

    [[nodiscard]] const T& get() const { return value_; }

    /// Publishes only a value that differs. True when it did.
    bool set(T value)
    {
        if (value == value_) {
            return false;
        }
        value_ = std::move(value);
        const auto observers = *observers_; // An observer may end its own subscription.
        for (const auto& [id, observer] : observers) {
            if (observers_->contains(id)) {
                observer(value_);
            }
        }
        return true;
    }

    /// Calls `observer` after every change, until the subscription dies.
    [[nodiscard]] Subscription observe(std::function<void(const T&)> observer)
    {
        const int id = nextID_++;
        observers_->emplace(id, std::move(observer));
        return Subscription([weak = std::weak_ptr(observers_), id] {
            if (const auto observers = weak.lock()) {
                observers->erase(id);
            }
        });
    }

private:
    using Observers = std::map<int, std::function<void(const T&)>>;

    T value_{};
    int nextID_ = 0;
    std::shared_ptr<Observers> observers_ = std::make_shared<Observers>();
};

} // namespace fadewell
