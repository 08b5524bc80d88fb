#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <set>

namespace fadewell {

/// Keeps a key present for a while after it was last active. Time is passed in, in seconds.
template <class Key>
class Linger final {
public:
    explicit Linger(double duration)
        : duration_(duration)
    {}

    /// The keys that are active now or were active less than the duration ago.
    std::set<Key> update(const std::set<Key>& active, double now)
    {
        for (const auto& key : active) {
            lastActive_.insert_or_assign(key, now);
        }
        std::erase_if(lastActive_, [&](const auto& entry) {
            return !active.contains(entry.first) && !(now - entry.second < duration_);
        });
        std::set<Key> present;
        for (const auto& [key, time] : lastActive_) {
            present.insert(key);
        }
        return present;
    }

    /// When the next key that is not among `active` stops lingering.
    [[nodiscard]] std::optional<double> nextExpiry(const std::set<Key>& active) const
    {
        std::optional<double> next;
        for (const auto& [key, time] : lastActive_) {
            if (!active.contains(key)) {
                next = std::min(next.value_or(time + duration_), time + duration_);
            }
        }
        return next;
    }

    [[nodiscard]] const std::map<Key, double>& lastActive() const { return lastActive_; }

private:
    double duration_;
    std::map<Key, double> lastActive_;
};

} // namespace fadewell
