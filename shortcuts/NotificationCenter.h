#pragma once

#include "base/Subscription.h"
#include "shortcuts/Name.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

namespace fadewell::shortcuts {

/// What happened, to whoever wants to know. Delivered at once, on the posting thread. [main]
class NotificationCenter final {
public:
    using UserInfo = std::map<std::string, std::variant<Name, bool>, std::less<>>;
    using Observer = std::function<void(const UserInfo&)>;

    /// Calls `observer` for each notification of this name until the subscription dies, which may
    /// be while it is called.
    [[nodiscard]] Subscription observe(std::string name, Observer observer);

    void post(std::string_view name, const UserInfo& userInfo = {}) const;

private:
    struct Entry {
        std::string name;
        Observer observer;
    };
    using Entries = std::map<int, Entry>; ///< in the order of observing

    std::shared_ptr<Entries> entries_ = std::make_shared<Entries>();
    int nextID_ = 0;
};

namespace notification {
/// A name's shortcut was changed; "name" in the user info says which.
constexpr const char* shortcutByNameDidChange = "KeyboardShortcuts_shortcutByNameDidChange";
/// A recorder began or ended; "isActive" in the user info says which.
constexpr const char* recorderActiveStatusDidChange =
    "KeyboardShortcuts_recorderActiveStatusDidChange";
/// A menu of this program takes the keyboard, and gives it back.
constexpr const char* menuDidBeginTracking = "NSMenuDidBeginTrackingNotification";
constexpr const char* menuDidEndTracking = "NSMenuDidEndTrackingNotification";
constexpr const char* nameKey = "name";
constexpr const char* isActiveKey = "isActive";
} // namespace notification

} // namespace fadewell::shortcuts
