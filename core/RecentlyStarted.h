#pragma once

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace fadewell {

/// Remembers in which order apps began to play.
class RecentlyStarted final {
public:
    /// Of several that began at the same moment, the order of their identifiers counts.
    void update(const std::set<std::string>& playing)
    {
        std::erase_if(order_, [&playing](const auto& id) { return !playing.contains(id); });
        for (const auto& id : playing) {
            if (std::find(order_.begin(), order_.end(), id) == order_.end()) {
                order_.push_back(id);
            }
        }
    }

    /// The app that began last and still plays.
    [[nodiscard]] std::optional<std::string> latest() const
    {
        return order_.empty() ? std::nullopt : std::optional(order_.back());
    }

private:
    std::vector<std::string> order_;
};

} // namespace fadewell
