#pragma once

#include "base/Logger.h"
#include "base/SerialQueue.h"
#include "base/Subscription.h"
#include "shortcuts/HotKey.h"
#include "shortcuts/HotKeyEvent.h"
#include "shortcuts/HotKeyService.h"
#include "shortcuts/LocalEventMonitor.h"
#include "shortcuts/NotificationCenter.h"

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace fadewell::shortcuts {

/// Decides when hot keys are live, and brings events to them.
///
/// While a menu tracks the keyboard hot keys would not arrive: then none is registered, and the key
/// events of the menu are matched instead. [main queue]
class HotKeyCenter final : public std::enable_shared_from_this<HotKeyCenter> {
public:
    enum class Mode {
        disabled, ///< nothing is registered, no keys are watched
        normal,   ///< every hot key is registered
        menuOpen  ///< nothing is registered, the menu's keys are watched
    };

    static constexpr std::uint32_t signature = 0x48544B59; // 'HTKY'
    static constexpr std::array<EventType, 2> hotKeyEventTypes{
        {{kEventClassKeyboard, kEventHotKeyPressed}, {kEventClassKeyboard, kEventHotKeyReleased}}};
    static constexpr std::array<EventType, 2> rawKeyEventTypes{
        {{kEventClassKeyboard, kEventRawKeyDown}, {kEventClassKeyboard, kEventRawKeyUp}}};

    [[nodiscard]] static std::shared_ptr<HotKeyCenter>
    create(std::shared_ptr<SerialQueue> mainQueue,
           std::shared_ptr<HotKeyService> service,
           std::shared_ptr<NotificationCenter> notifications);

    /// False when the system refuses it; nothing is kept then.
    [[nodiscard]] bool registerHotKey(const std::shared_ptr<HotKey>& hotKey);

    /// Whether hot keys are wanted at all.
    void setEnabled(bool isEnabled);
    [[nodiscard]] Mode mode() const { return mode_; }
    /// The hot keys that are registered or may come back, for tests.
    [[nodiscard]] std::size_t count() const { return hotKeys_.size(); }

    /// The one entry point for events of the system.
    OSStatus handleEvent(const HotKeyEvent* event);

private:
    friend class HotKey;

    HotKeyCenter(std::shared_ptr<SerialQueue> mainQueue,
                 std::shared_ptr<HotKeyService> service,
                 std::shared_ptr<NotificationCenter> notifications);
    void observeMenus();

    // For HotKey.
    [[nodiscard]] std::int64_t nextID() { return ++lastHotKeyId_; }
    void forget(HotKey& hotKey);

    void setMenuOpen(bool isMenuOpen);
    void updateMode();
    [[nodiscard]] std::vector<std::shared_ptr<HotKey>> live() const;
    [[nodiscard]] bool registerWithSystem(HotKey& hotKey);
    void unregister(HotKey& hotKey);
    void unregisterAll();
    void reregisterAll();
    void installHandler();
    void handleHotKeyEvents(bool isOn);
    void handleRawKeyEvents(bool isOn);

    [[nodiscard]] OSStatus dispatchHotKey(const HotKeyEvent& event);
    [[nodiscard]] OSStatus dispatchRawKey(const HotKeyEvent& event);
    [[nodiscard]] bool dispatchLocal(const KeyEvent& event);
    [[nodiscard]] std::shared_ptr<HotKey> matching(std::uint32_t keyCode,
                                                   std::uint32_t modifiers) const;

    const Logger log_{"shortcuts"};
    const std::shared_ptr<SerialQueue> mainQueue_;
    const std::shared_ptr<HotKeyService> service_;
    const std::shared_ptr<NotificationCenter> notifications_;
    std::int64_t lastHotKeyId_ = 0;
    std::map<std::int64_t, WeakHotKey> hotKeys_; ///< registered once and not yet destroyed
    bool hasEventHandler_ = false;
    bool isEnabled_ = true;
    bool isMenuOpen_ = false;
    bool isHotKeyEventHandlingEnabled_ = false;
    bool isRawKeyEventHandlingEnabled_ = false;
    Mode mode_ = Mode::normal;
    std::optional<LocalEventMonitor> keyEventMonitor_; ///< made on first use
    Subscription openMenuObserver_;
    Subscription closeMenuObserver_;
};

} // namespace fadewell::shortcuts
