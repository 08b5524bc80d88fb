#include "shortcuts/HotKeyCenter.h"

#include <limits>
#include <utility>

namespace fadewell::shortcuts {
namespace {

template <class T>
bool fitsIn32Bits(T value)
{
    return value >= 0 && value <= std::numeric_limits<std::uint32_t>::max();
}

} // namespace

std::shared_ptr<HotKeyCenter>
HotKeyCenter::create(std::shared_ptr<SerialQueue> mainQueue,
                     std::shared_ptr<HotKeyService> service,
                     std::shared_ptr<NotificationCenter> notifications)
{
    const std::shared_ptr<HotKeyCenter> center(
        new HotKeyCenter(std::move(mainQueue), std::move(service), std::move(notifications)));
    center->observeMenus();
    return center;
}

HotKeyCenter::HotKeyCenter(std::shared_ptr<SerialQueue> mainQueue,
                           std::shared_ptr<HotKeyService> service,
                           std::shared_ptr<NotificationCenter> notifications)
    : mainQueue_(std::move(mainQueue))
    , service_(std::move(service))
    , notifications_(std::move(notifications))
{}

void HotKeyCenter::observeMenus()
{
    const auto follow = [this](const char* name, bool isOpen) {
        return notifications_->observe(name, [weak = weak_from_this(), isOpen](const auto&) {
            if (const auto self = weak.lock()) {
                self->setMenuOpen(isOpen);
            }
        });
    };
    openMenuObserver_ = follow(notification::menuDidBeginTracking, true);
    closeMenuObserver_ = follow(notification::menuDidEndTracking, false);
}

void HotKeyCenter::setMenuOpen(bool isMenuOpen)
{
    mainQueue_->assertCurrent();
    if (std::exchange(isMenuOpen_, isMenuOpen) != isMenuOpen) {
        updateMode();
    }
}

void HotKeyCenter::setEnabled(bool isEnabled)
{
    mainQueue_->assertCurrent();
    if (std::exchange(isEnabled_, isEnabled) != isEnabled) {
        updateMode();
    }
}

void HotKeyCenter::updateMode()
{
    const auto wanted = !isEnabled_ ? Mode::disabled : isMenuOpen_ ? Mode::menuOpen : Mode::normal;
    if (std::exchange(mode_, wanted) == wanted || !hasEventHandler_) {
        return;
    }
    if (wanted == Mode::normal) {
        reregisterAll();
    } else {
        unregisterAll();
    }
    handleHotKeyEvents(wanted == Mode::normal);
    handleRawKeyEvents(wanted == Mode::menuOpen);
}

bool HotKeyCenter::registerHotKey(const std::shared_ptr<HotKey>& hotKey)
{
    mainQueue_->assertCurrent();
    if (!registerWithSystem(*hotKey)) {
        return false;
    }
    hotKeys_.insert_or_assign(hotKey->id, WeakHotKey{hotKey});
    installHandler();
    if (!hasEventHandler_) {
        return true; // Registered, although nothing will bring its events.
    }
    if (mode_ == Mode::normal) {
        reregisterAll();
    } else {
        unregisterAll(); // It comes back with the mode.
    }
    handleHotKeyEvents(mode_ == Mode::normal);
    handleRawKeyEvents(mode_ == Mode::menuOpen);
    return true;
}

void HotKeyCenter::installHandler()
{
    if (hasEventHandler_) {
        return;
    }
    const auto status = service_->installEventHandler([weak = weak_from_this()](const auto* event) {
        const auto self = weak.lock();
        return self ? self->handleEvent(event) : eventNotHandledErr;
    });
    hasEventHandler_ = status == noErr;
    if (!hasEventHandler_) {
        log_.error("No shortcut events: the handler was refused ({})", status);
    }
}

bool HotKeyCenter::registerWithSystem(HotKey& hotKey)
{
    if (!fitsIn32Bits(hotKey.carbonKeyCode) || !fitsIn32Bits(hotKey.carbonModifiers) ||
        !fitsIn32Bits(hotKey.id))
    {
        return false;
    }
    EventHotKeyRef ref = 0;
    const auto status =
        service_->registerEventHotKey(static_cast<std::uint32_t>(hotKey.carbonKeyCode),
                                      static_cast<std::uint32_t>(hotKey.carbonModifiers),
                                      {signature, static_cast<std::uint32_t>(hotKey.id)},
                                      ref);
    if (status != noErr || ref == 0) {
        return false;
    }
    hotKey.eventHotKeyRef = ref;
    return true;
}

void HotKeyCenter::unregister(HotKey& hotKey)
{
    if (const auto ref = std::exchange(hotKey.eventHotKeyRef, 0); ref != 0) {
        service_->unregisterEventHotKey(ref);
    }
}

void HotKeyCenter::forget(HotKey& hotKey)
{
    mainQueue_->assertCurrent();
    unregister(hotKey);
    hotKeys_.erase(hotKey.id);
}

std::vector<std::shared_ptr<HotKey>> HotKeyCenter::live() const
{
    std::vector<std::shared_ptr<HotKey>> hotKeys;
    for (const auto& [id, weak] : hotKeys_) {
        if (auto hotKey = weak.value.lock()) {
            hotKeys.push_back(std::move(hotKey));
        }
    }
    return hotKeys;
}

void HotKeyCenter::unregisterAll()
{
    for (const auto& hotKey : live()) {
        unregister(*hotKey);
    }
}

void HotKeyCenter::reregisterAll()
{
    for (const auto& hotKey : live()) {
        if (hotKey->eventHotKeyRef != 0 || registerWithSystem(*hotKey)) {
            continue;
        }
        unregister(*hotKey);
        hotKeys_.erase(hotKey->id);
        log_.notice("A shortcut was taken by another program meanwhile: key {}, modifiers {:#x}",
                    hotKey->carbonKeyCode,
                    hotKey->carbonModifiers);
        if (const auto failed = hotKey->onRegistrationFailed) {
            failed();
        }
    }
}

void HotKeyCenter::handleHotKeyEvents(bool isOn)
{
    if (std::exchange(isHotKeyEventHandlingEnabled_, isOn) == isOn) {
        return;
    }
    if (isOn) {
        service_->addEventTypes(hotKeyEventTypes);
    } else {
        service_->removeEventTypes(hotKeyEventTypes);
    }
}

void HotKeyCenter::handleRawKeyEvents(bool isOn)
{
    if (std::exchange(isRawKeyEventHandlingEnabled_, isOn) == isOn) {
        return;
    }
    if (service_->deliversRawKeysToHandler()) {
        if (isOn) {
            service_->addEventTypes(rawKeyEventTypes);
        } else {
            service_->removeEventTypes(rawKeyEventTypes);
        }
        return;
    }
    if (!keyEventMonitor_) {
        keyEventMonitor_.emplace(service_,
                                 LocalEventMonitor::keyDownMask | LocalEventMonitor::keyUpMask,
                                 [weak = weak_from_this()](const KeyEvent& event) {
                                     const auto self = weak.lock();
                                     return self && self->dispatchLocal(event);
                                 });
    }
    if (isOn) {
        keyEventMonitor_->start();
    } else {
        keyEventMonitor_->stop();
    }
}

} // namespace fadewell::shortcuts
