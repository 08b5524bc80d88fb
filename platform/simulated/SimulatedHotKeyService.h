#pragma once

#include "shortcuts/HotKeyService.h"
#include "shortcuts/NotificationCenter.h"

#include <map>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace fadewell {

/// A desktop's keyboard as scripted. Its public fields may be changed at any time.
class SimulatedHotKeyService final : public shortcuts::HotKeyService {
public:
    using OSStatus = shortcuts::OSStatus;
    using Shortcut = shortcuts::Shortcut;

    Support offered = Support::any;
    std::set<Shortcut> heldByOthers;
    bool refusesHandler = false;
    bool rawKeysToHandler = false;
    std::vector<Shortcut> system;
    std::map<std::uint32_t, std::string> characters;
    std::vector<shortcuts::NamedBinding> bound;
    std::map<std::string, std::string> triggers;

    /// What is registered now; the same combination twice is two entries.
    [[nodiscard]] std::vector<Shortcut> registered() const;
    [[nodiscard]] const std::set<shortcuts::EventType>& eventTypes() const { return types_; }
    [[nodiscard]] bool isMonitored() const;

    /// Sends an event to the handler, as the system does; declined when it isn't wanted.
    OSStatus send(const shortcuts::HotKeyEvent* event);
    /// Presses or releases a combination; false when nobody has it registered.
    bool press(const Shortcut& shortcut) { return strike(shortcut, true); }
    bool release(const Shortcut& shortcut) { return strike(shortcut, false); }
    /// Shows a key event to the monitors; true when one swallowed it.
    bool deliver(const shortcuts::KeyEvent& event);
    /// The desktop's own event for a bound name.
    void fire(const std::string& id, bool isPressed) { fired_(id, isPressed); }
    void changeSupport(Support support);
    void changeLayout(std::map<std::uint32_t, std::string> layout);
    void changeTriggers(std::map<std::string, std::string> assigned);

    [[nodiscard]] Support support() const override { return offered; }
    [[nodiscard]] Subscription onSupportChanged(std::function<void()> changed) override;
    OSStatus registerEventHotKey(std::uint32_t keyCode,
                                 std::uint32_t modifiers,
                                 shortcuts::HotKeyID id,
                                 shortcuts::EventHotKeyRef& out) override;
    OSStatus unregisterEventHotKey(shortcuts::EventHotKeyRef ref) override;
    OSStatus installEventHandler(Handler handler) override;
    void addEventTypes(std::span<const shortcuts::EventType> types) override;
    void removeEventTypes(std::span<const shortcuts::EventType> types) override;
    [[nodiscard]] bool deliversRawKeysToHandler() const override { return rawKeysToHandler; }
    [[nodiscard]] Subscription monitorKeys(KeyFilter filter) override;
    /// The key's number is taken for its virtual key code.
    bool deliverLocalKey(std::uint32_t nativeKey,
                         bool isPressed,
                         bool isRepeat,
                         std::uint32_t modifierFlags) override;
    [[nodiscard]] bool wantsLocalKeys() const override { return isMonitored(); }
    [[nodiscard]] std::vector<Shortcut> systemHotKeys() override { return system; }
    [[nodiscard]] bool isHeldElsewhere(const Shortcut& shortcut) override
    {
        return heldByOthers.contains(shortcut);
    }
    [[nodiscard]] std::string character(std::uint32_t keyCode) override;
    [[nodiscard]] Subscription onLayoutChanged(std::function<void()> changed) override;
    OSStatus bindNamed(std::vector<shortcuts::NamedBinding> bindings, Fired fired) override;
    [[nodiscard]] std::map<std::string, std::string> namedTriggers() const override
    {
        return triggers;
    }
    [[nodiscard]] Subscription onNamedTriggersChanged(std::function<void()> changed) override;

private:
    struct Registration {
        Shortcut shortcut;
        shortcuts::HotKeyID id;
    };

    [[nodiscard]] Subscription observe(const char* what, std::function<void()> changed);
    bool strike(const Shortcut& shortcut, bool isPressed);

    shortcuts::EventHotKeyRef lastRef_ = 0;
    std::map<shortcuts::EventHotKeyRef, Registration> registrations_;
    std::set<shortcuts::EventType> types_;
    Handler handler_;
    Fired fired_;
    std::shared_ptr<std::map<int, KeyFilter>> monitors_ =
        std::make_shared<std::map<int, KeyFilter>>();
    int nextMonitor_ = 0;
    shortcuts::NotificationCenter changes_;
};

} // namespace fadewell
