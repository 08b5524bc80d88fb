#include "platform/linux/hotkeys/LinuxHotKeyService.h"

#include "platform/linux/hotkeys/KeyCodeMap.h"
#include "shortcuts/Modifiers.h"

#include <linux/input-event-codes.h>
#include <utility>

namespace fadewell {
namespace {

using namespace shortcuts;

int functionKey(std::uint32_t evdev)
{
    constexpr std::uint32_t tenth = KEY_F10 - KEY_F1 + 1;
    if (evdev >= KEY_F1 && evdev <= KEY_F10) {
        return static_cast<int>(evdev - KEY_F1 + 1);
    }
    if (evdev == KEY_F11 || evdev == KEY_F12) {
        return static_cast<int>(evdev - KEY_F11 + tenth + 1);
    }
    return evdev >= KEY_F13 && evdev <= KEY_F24 ? static_cast<int>(evdev - KEY_F13 + 13) : 0;
}

} // namespace

Subscription LinuxHotKeyService::onSupportChanged(std::function<void()> changed)
{
    return supportListeners_.add(std::move(changed));
}

OSStatus LinuxHotKeyService::registerEventHotKey(std::uint32_t /*keyCode*/,
                                                 std::uint32_t /*modifiers*/,
                                                 HotKeyID /*id*/,
                                                 EventHotKeyRef& /*out*/)
{
    return eventHotKeyInvalidErr;
}

OSStatus LinuxHotKeyService::unregisterEventHotKey(EventHotKeyRef /*ref*/)
{
    return eventHotKeyInvalidErr;
}

OSStatus LinuxHotKeyService::installEventHandler(Handler handler)
{
    handler_ = std::move(handler);
    return noErr;
}

void LinuxHotKeyService::addEventTypes(std::span<const EventType> types)
{
    types_.insert(types.begin(), types.end());
}

void LinuxHotKeyService::removeEventTypes(std::span<const EventType> types)
{
    for (const auto& type : types) {
        types_.erase(type);
    }
}

void LinuxHotKeyService::send(HotKeyID id, bool isPressed)
{
    HotKeyEvent event;
    event.type = {kEventClassKeyboard, isPressed ? kEventHotKeyPressed : kEventHotKeyReleased};
    event.directObject = {id, noErr};
    if (handler_ && types_.contains(event.type)) {
        handler_(&event);
    }
}

Subscription LinuxHotKeyService::monitorKeys(KeyFilter filter)
{
    return monitors_.add(std::move(filter));
}

bool LinuxHotKeyService::deliverLocalKey(std::uint32_t evdev,
                                         bool isPressed,
                                         bool isRepeat,
                                         std::uint32_t modifierFlags)
{
    KeyEvent event;
    event.type = isPressed ? KeyEvent::Type::keyDown : KeyEvent::Type::keyUp;
    event.keyCode = virtualKeyCode(evdev);
    event.modifierFlags = modifierFlags;
    event.isARepeat = isRepeat;
    event.functionKey = functionKey(evdev);
    return monitors_.any([&event](const KeyFilter& filter) { return filter(event); });
}

std::vector<Shortcut> LinuxHotKeyService::systemHotKeys()
{
    std::vector<Shortcut> hotKeys;
    const auto add = [&hotKeys](std::uint32_t evdev, std::uint32_t modifiers) {
        if (const auto keyCode = virtualKeyCode(evdev)) {
            hotKeys.push_back({*keyCode, modifiers});
        }
    };
    for (const auto& binding : readSystemKeys_ ? readSystemKeys_() : std::vector<KeyBinding>()) {
        if (binding.evdev) {
            add(*binding.evdev, binding.modifiers);
            continue;
        }
        for (const auto& key : characters_.keysOf(binding.symbol)) {
            add(key.keycode - xKeycodeOffset,
                binding.modifiers | (key.needsShift ? classic::shift : 0));
        }
    }
    return hotKeys;
}

std::string LinuxHotKeyService::character(std::uint32_t keyCode)
{
    const auto evdev = evdevCode(keyCode);
    return evdev ? characters_.of(static_cast<std::uint32_t>(*evdev + xKeycodeOffset)) : "";
}

Subscription LinuxHotKeyService::onLayoutChanged(std::function<void()> changed)
{
    return layoutListeners_.add(std::move(changed));
}

OSStatus LinuxHotKeyService::bindNamed(std::vector<NamedBinding> /*bindings*/, Fired /*fired*/)
{
    return eventHotKeyInvalidErr;
}

Subscription LinuxHotKeyService::onNamedTriggersChanged(std::function<void()> changed)
{
    return triggerListeners_.add(std::move(changed));
}

} // namespace fadewell
