#pragma once

#include "audio/AudioHardware.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>

namespace fadewell::pipewire {

/// An element that stands for all of them.
inline constexpr AudioObjectPropertyElement elementWildcard = 0xFFFFFFFF;

/// Whether a change of `changed` is one of what `wanted` asks about; wildcards on either side.
[[nodiscard]] bool matches(const AudioObjectPropertyAddress& wanted,
                           const AudioObjectPropertyAddress& changed);

/// Who wants to hear of which property. [any thread]
///
/// The lock in here is held for no call out of this class, so it may be taken under any other.
class ListenerTable final {
public:
    [[nodiscard]] ListenerToken add(AudioObjectID object,
                                    const AudioObjectPropertyAddress& address,
                                    std::shared_ptr<SerialQueue> queue,
                                    std::function<void()> changed);

    /// False for a token that isn't registered. Nothing arrives once this has returned on the
    /// listener's own queue.
    bool remove(ListenerToken token);

    /// Posts to everyone who listens to this.
    void notify(AudioObjectID object, const AudioObjectPropertyAddress& changed);
    void notify(AudioObjectID object,
                AudioObjectPropertySelector selector,
                AudioObjectPropertyScope scope = kAudioObjectPropertyScopeGlobal,
                AudioObjectPropertyElement element = kAudioObjectPropertyElementMain)
    {
        notify(object, AudioObjectPropertyAddress{selector, scope, element});
    }

private:
    struct Listener {
        AudioObjectID object;
        AudioObjectPropertyAddress address;
        std::shared_ptr<SerialQueue> queue;
        std::function<void()> changed;
    };

    std::mutex mutex_;
    ListenerToken last_ = 0;
    std::map<ListenerToken, std::shared_ptr<Listener>> listeners_;
};

} // namespace fadewell::pipewire
