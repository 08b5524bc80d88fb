#pragma once

#include "base/Subscription.h"
#include "shortcuts/HotKeyEvent.h"
#include "shortcuts/KeyEvent.h"
#include "shortcuts/NamedBinding.h"
#include "shortcuts/Shortcut.h"

#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace fadewell::shortcuts {

/// The registration handle of a hot key; 0 is none.
using EventHotKeyRef = std::uint64_t;

/// Keyboard shortcuts that work whatever application is in front, as this system offers them.
/// Nothing throws; every callback comes on the main queue and never from inside a call. [main]
class HotKeyService {
public:
    enum class Support {
        any,    ///< any combination can be registered
        portal, ///< the desktop assigns combinations to names, see bindNamed
        none
    };
    using Handler = std::function<OSStatus(const HotKeyEvent*)>;
    /// True swallows the event.
    using KeyFilter = std::function<bool(const KeyEvent&)>;
    /// The raw value of a bound name, and whether it was pressed or released.
    using Fired = std::function<void(const std::string& id, bool isPressed)>;

    virtual ~HotKeyService() = default;

    [[nodiscard]] virtual Support support() const = 0;
    /// May turn up late, and change: a desktop that starts after this program.
    [[nodiscard]] virtual Subscription onSupportChanged(std::function<void()> changed) = 0;

    /// Refuses a combination that another program holds, and then leaves nothing behind.
    virtual OSStatus registerEventHotKey(std::uint32_t keyCode,
                                         std::uint32_t modifiers,
                                         HotKeyID id,
                                         EventHotKeyRef& out) = 0;
    virtual OSStatus unregisterEventHotKey(EventHotKeyRef ref) = 0;

    /// Installs the one handler, which gets no events until it asks for some.
    virtual OSStatus installEventHandler(Handler handler) = 0;
    virtual void addEventTypes(std::span<const EventType> types) = 0;
    virtual void removeEventTypes(std::span<const EventType> types) = 0;

    /// Whether key events in menus come to the handler, as on systems without key monitors.
    [[nodiscard]] virtual bool deliversRawKeysToHandler() const { return false; }
    /// Shows `filter` each key event of this program's own windows and menus before they get it.
    [[nodiscard]] virtual Subscription monitorKeys(KeyFilter filter) = 0;
    /// Where only the interface sees those keys: it brings each here, as long as it is wanted.
    /// `nativeKey` is the system's own number of the key. True: the window doesn't get it.
    virtual bool deliverLocalKey(std::uint32_t /*nativeKey*/,
                                 bool /*isPressed*/,
                                 bool /*isRepeat*/,
                                 std::uint32_t /*modifierFlags*/)
    {
        return false;
    }
    [[nodiscard]] virtual bool wantsLocalKeys() const { return false; }

    /// The enabled shortcuts of the system itself, as far as they can be listed.
    [[nodiscard]] virtual std::vector<Shortcut> systemHotKeys() = 0;
    /// Whether another program, or the desktop, holds the combination now.
    [[nodiscard]] virtual bool isHeldElsewhere(const Shortcut& shortcut) = 0;

    /// What the key types in the current layout or, where that isn't ASCII, in the first that is;
    /// empty for keys that type nothing.
    [[nodiscard]] virtual std::string character(std::uint32_t keyCode) = 0;
    /// Calls `changed` when keys have come to type something else.
    [[nodiscard]] virtual Subscription onLayoutChanged(std::function<void()> changed) = 0;

    /// Asks the desktop to assign combinations, in portal mode only; replaces what was bound
    /// before.
    virtual OSStatus bindNamed(std::vector<NamedBinding> bindings, Fired fired) = 0;
    /// What the desktop shows as the combination of each bound name; without one it has none.
    [[nodiscard]] virtual std::map<std::string, std::string> namedTriggers() const = 0;
    [[nodiscard]] virtual Subscription onNamedTriggersChanged(std::function<void()> changed) = 0;
};

} // namespace fadewell::shortcuts
