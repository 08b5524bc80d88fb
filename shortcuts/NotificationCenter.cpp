#include "shortcuts/NotificationCenter.h"

#include <utility>

namespace fadewell::shortcuts {

Subscription NotificationCenter::observe(std::string name, Observer observer)
{
    const int id = nextID_++;
    entries_->emplace(id, Entry{std::move(name), std::move(observer)});
    return Subscription([weak = std::weak_ptr(entries_), id] {
        if (const auto entries = weak.lock()) {
            entries->erase(id);
        }
    });
}

void NotificationCenter::post(std::string_view name, const UserInfo& userInfo) const
{
    const auto all = *entries_; // An observer may end any subscription.
    for (const auto& [id, entry] : all) {
        if (entry.name == name && entries_->contains(id)) {
            entry.observer(userInfo);
        }
    }
}

} // namespace fadewell::shortcuts
