#pragma once

#include "platform/linux/hotkeys/KeyBinding.h"
#include "platform/linux/hotkeys/Listeners.h"
#include "platform/linux/hotkeys/TypedCharacters.h"
#include "shortcuts/HotKeyService.h"

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace fadewell {

/// What is the same on every Linux desktop. By itself: one without shortcuts. [main queue]
class LinuxHotKeyService : public shortcuts::HotKeyService {
public:
    using OSStatus = shortcuts::OSStatus;

    /// Reads what the desktop has bound itself; asked anew each time that someone wants to know.
    void setSystemKeys(std::function<std::vector<KeyBinding>()> read)
    {
        readSystemKeys_ = std::move(read);
    }

    [[nodiscard]] Support support() const override { return Support::none; }
    [[nodiscard]] Subscription onSupportChanged(std::function<void()> changed) override;
    OSStatus registerEventHotKey(std::uint32_t keyCode,
                                 std::uint32_t modifiers,
                                 shortcuts::HotKeyID id,
                                 shortcuts::EventHotKeyRef& out) override;
    OSStatus unregisterEventHotKey(shortcuts::EventHotKeyRef ref) override;
    OSStatus installEventHandler(Handler handler) override;
    void addEventTypes(std::span<const shortcuts::EventType> types) override;
    void removeEventTypes(std::span<const shortcuts::EventType> types) override;
    [[nodiscard]] Subscription monitorKeys(KeyFilter filter) override;
    /// On this keyboard; bindings to keys that shortcuts don't know are left out.
    [[nodiscard]] std::vector<shortcuts::Shortcut> systemHotKeys() override;
    [[nodiscard]] bool isHeldElsewhere(const shortcuts::Shortcut& /*shortcut*/) override
    {
        return false;
    }
    [[nodiscard]] std::string character(std::uint32_t keyCode) override;
    [[nodiscard]] Subscription onLayoutChanged(std::function<void()> changed) override;
    OSStatus bindNamed(std::vector<shortcuts::NamedBinding> bindings, Fired fired) override;
    [[nodiscard]] std::map<std::string, std::string> namedTriggers() const override { return {}; }
    [[nodiscard]] Subscription onNamedTriggersChanged(std::function<void()> changed) override;

    /// `evdev` is the kernel's code.
    bool deliverLocalKey(std::uint32_t evdev,
                         bool isPressed,
                         bool isRepeat,
                         std::uint32_t modifierFlags) override;
    [[nodiscard]] bool wantsLocalKeys() const override { return !monitors_.isEmpty(); }

protected:
    /// Brings an event to the handler, if it wants it.
    void send(shortcuts::HotKeyID id, bool isPressed);

    Listeners<std::function<void()>> supportListeners_;
    Listeners<std::function<void()>> layoutListeners_;
    Listeners<std::function<void()>> triggerListeners_;
    TypedCharacters characters_;

private:
    Listeners<KeyFilter> monitors_;
    std::function<std::vector<KeyBinding>()> readSystemKeys_; ///< empty: nothing is known
    Handler handler_;
    std::set<shortcuts::EventType> types_;
};

} // namespace fadewell
