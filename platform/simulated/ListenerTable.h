#pragma once

#include "audio/AudioHardware.h"
#include "platform/simulated/ObjectTable.h"

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace fadewell {

/// Who wants to hear of which changes. Not synchronised.
class ListenerTable final {
public:
    struct Listener {
        AudioObjectID object = 0;
        AudioObjectPropertyAddress address{};
        std::shared_ptr<SerialQueue> queue;
        std::function<void()> changed;
    };

    ListenerToken add(Listener listener);
    [[nodiscard]] bool remove(ListenerToken token) { return listeners_.erase(token) == 1; }
    [[nodiscard]] std::size_t count() const { return listeners_.size(); }

    /// The listeners of these changes, one entry for each notice, in the order of the changes.
    [[nodiscard]] std::vector<std::shared_ptr<const Listener>>
    matching(const PropertyChanges& changes) const;

    /// Posts each notice to its queue; one whose listener is removed before it runs does nothing.
    static void post(const std::vector<std::shared_ptr<const Listener>>& notices);

private:
    std::map<ListenerToken, std::shared_ptr<const Listener>> listeners_;
    ListenerToken lastToken_ = 0;
};

} // namespace fadewell
