#include "platform/simulated/ListenerTable.h"

#include <utility>

namespace fadewell {

ListenerToken ListenerTable::add(Listener listener)
{
    listeners_[++lastToken_] = std::make_shared<const Listener>(std::move(listener));
    return lastToken_;
}

std::vector<std::shared_ptr<const ListenerTable::Listener>>
ListenerTable::matching(const PropertyChanges& changes) const
{
    std::vector<std::shared_ptr<const Listener>> notices;
    for (const auto& [object, address] : changes) {
        for (const auto& [token, listener] : listeners_) {
            if (listener->object == object && covers(listener->address, address)) {
                notices.push_back(listener);
            }
        }
    }
    return notices;
}

void ListenerTable::post(const std::vector<std::shared_ptr<const Listener>>& notices)
{
    for (const auto& notice : notices) {
        notice->queue->async([weak = std::weak_ptr(notice)] {
            if (const auto listener = weak.lock()) {
                listener->changed();
            }
        });
    }
}

} // namespace fadewell
