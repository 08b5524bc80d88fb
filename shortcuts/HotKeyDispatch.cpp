#include "shortcuts/HotKeyCenter.h"
#include "shortcuts/Modifiers.h"
#include "shortcuts/SpecialKey.h"

namespace fadewell::shortcuts {
namespace {

// All modifiers of an event but caps lock and the numeric keypad, which are none to the user.
constexpr std::uint32_t relevantFlags = 0xFFDE0000;

} // namespace

OSStatus HotKeyCenter::handleEvent(const HotKeyEvent* event)
{
    mainQueue_->assertCurrent();
    if (event == nullptr) {
        return eventNotHandledErr;
    }
    switch (event->type.eventKind) {
    case kEventHotKeyPressed:
    case kEventHotKeyReleased:
        return dispatchHotKey(*event);
    case kEventRawKeyDown:
    case kEventRawKeyUp:
        return dispatchRawKey(*event);
    default:
        return eventNotHandledErr;
    }
}

OSStatus HotKeyCenter::dispatchHotKey(const HotKeyEvent& event)
{
    if (event.directObject.status != noErr) {
        return event.directObject.status;
    }
    const auto& tag = event.directObject.value;
    const auto found = hotKeys_.find(tag.id);
    const auto hotKey = found == hotKeys_.end() ? nullptr : found->second.value.lock();
    if (tag.signature != signature || !hotKey) {
        return eventNotHandledErr;
    }
    (event.type.eventKind == kEventHotKeyPressed ? hotKey->onKeyDown : hotKey->onKeyUp)();
    return noErr;
}

OSStatus HotKeyCenter::dispatchRawKey(const HotKeyEvent& event)
{
    if (event.keyCode.status != noErr) {
        return event.keyCode.status;
    }
    if (event.keyModifiers.status != noErr) {
        return event.keyModifiers.status;
    }
    const auto hotKey = matching(event.keyCode.value, event.keyModifiers.value);
    if (!hotKey) {
        return eventNotHandledErr;
    }
    (event.type.eventKind == kEventRawKeyDown ? hotKey->onKeyDown : hotKey->onKeyUp)();
    return noErr;
}

bool HotKeyCenter::dispatchLocal(const KeyEvent& event)
{
    const bool isDown = event.type == KeyEvent::Type::keyDown;
    if ((isDown && event.isARepeat) || !event.keyCode) {
        return false; // Holding a shortcut down acts once.
    }
    const auto hotKey =
        matching(*event.keyCode, classicModifiers(event.modifierFlags & relevantFlags));
    if (!hotKey) {
        return false;
    }
    (isDown ? hotKey->onKeyDown : hotKey->onKeyUp)();
    return true;
}

std::shared_ptr<HotKey> HotKeyCenter::matching(std::uint32_t keyCode, std::uint32_t modifiers) const
{
    const auto pressed = withoutImpliedFunction(keyCode, normalizedModifiers(modifiers));
    for (const auto& hotKey : live()) {
        const auto wanted =
            withoutImpliedFunction(keyCode, normalizedModifiers(hotKey->carbonModifiers));
        if (hotKey->carbonKeyCode == keyCode && wanted == pressed) {
            return hotKey;
        }
    }
    return nullptr;
}

} // namespace fadewell::shortcuts
