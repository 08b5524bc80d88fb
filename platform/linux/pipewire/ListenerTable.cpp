#include "platform/linux/pipewire/ListenerTable.h"

#include <utility>
#include <vector>

namespace fadewell::pipewire {

namespace {

bool meet(std::uint32_t one, std::uint32_t other, std::uint32_t wildcard)
{
    return one == other || one == wildcard || other == wildcard;
}

} // namespace

bool matches(const AudioObjectPropertyAddress& wanted, const AudioObjectPropertyAddress& changed)
{
    return wanted.mSelector == changed.mSelector &&
           meet(wanted.mScope, changed.mScope, kAudioObjectPropertyScopeWildcard) &&
           meet(wanted.mElement, changed.mElement, elementWildcard);
}

ListenerToken ListenerTable::add(AudioObjectID object,
                                 const AudioObjectPropertyAddress& address,
                                 std::shared_ptr<SerialQueue> queue,
                                 std::function<void()> changed)
{
    auto listener =
        std::make_shared<Listener>(Listener{object, address, std::move(queue), std::move(changed)});
    const std::lock_guard lock(mutex_);
    listeners_.emplace(++last_, std::move(listener));
    return last_;
}

bool ListenerTable::remove(ListenerToken token)
{
    // What the listener holds may run anything when it goes: after the lock.
    std::shared_ptr<Listener> removed;
    const std::lock_guard lock(mutex_);
    const auto found = listeners_.find(token);
    if (found == listeners_.end()) {
        return false;
    }
    removed = std::move(found->second);
    listeners_.erase(found);
    return true;
}

void ListenerTable::notify(AudioObjectID object, const AudioObjectPropertyAddress& changed)
{
    std::vector<std::shared_ptr<Listener>> concerned;
    {
        const std::lock_guard lock(mutex_);
        for (const auto& [token, listener] : listeners_) {
            if (listener->object == object && matches(listener->address, changed)) {
                concerned.push_back(listener);
            }
        }
    }
    for (const auto& listener : concerned) {
        // Weak: removal takes back what was posted and has not run yet.
        listener->queue->async([weak = std::weak_ptr<Listener>(listener)] {
            if (const auto alive = weak.lock()) {
                alive->changed();
            }
        });
    }
}

} // namespace fadewell::pipewire
