#include "platform/linux/hotkeys/X11HotKeyService.h"
#include "platform/linux/hotkeys/XcbXkb.h"

#include <cstring>
#include <utility>

namespace fadewell {
namespace {

constexpr std::uint8_t sentBySomeone = 0x80;

/// An event as the type that its code says it is.
template <class T>
T as(const xcb_generic_event_t& event)
{
    static_assert(sizeof(T) <= sizeof(xcb_generic_event_t));
    T result{};
    std::memcpy(&result, &event, sizeof(T));
    return result;
}

} // namespace

void X11HotKeyService::readEventsSoon()
{
    mainQueue_->async([weak = weak_from_this()] {
        if (const auto self = weak.lock()) {
            self->readEvents();
        }
    });
}

void X11HotKeyService::readEvents()
{
    const auto self = shared_from_this(); // What a key does may let go of this.
    while (connection_) {
        const XcbReply<xcb_generic_event_t> event(xcb_poll_for_event(connection_.get()));
        if (event) {
            handle(*event);
        } else if (xcb_connection_has_error(connection_.get()) != 0) {
            lost();
        } else if (isKeyboardChanged_) {
            isKeyboardChanged_ = false; // A change comes as several events: they are read once.
            reloadKeyboard();
        } else {
            return;
        }
    }
}

void X11HotKeyService::handle(const xcb_generic_event_t& event)
{
    if ((event.response_type & sentBySomeone) != 0) {
        return; // Another client's invention: no key was pressed.
    }
    if (event.response_type == XCB_KEY_PRESS) {
        pressed(as<xcb_key_press_event_t>(event));
    } else if (event.response_type == XCB_KEY_RELEASE) {
        released(as<xcb_key_release_event_t>(event));
    } else if (event.response_type == XCB_MAPPING_NOTIFY) {
        isKeyboardChanged_ = true;
    } else if (event.response_type == keyboard_.firstEvent()) {
        keyboardEvent(event);
    }
}

void X11HotKeyService::pressed(const xcb_key_press_event_t& event)
{
    if (held_.contains(event.detail)) {
        return; // It repeats.
    }
    const auto state = static_cast<std::uint16_t>(event.state & keyboard_.modifiers().relevant());
    for (const auto& [ref, registration] : registrations_) {
        bool isPossible = false;
        const auto wanted =
            keyboard_.modifiers().state(registration.combination.modifiers, isPossible);
        if (registration.combination.keycode == event.detail && isPossible && wanted == state) {
            if (held_.empty()) {
                grabbing_ = event.detail;
            }
            held_.emplace(event.detail, ref);
            send(shortcuts::HotKeyID(registration.id),
                 true); // A copy: it may be gone before the call ends.
            return;
        }
    }
}

// Whatever modifiers are still down: people let go of them in any order.
void X11HotKeyService::released(const xcb_key_release_event_t& event)
{
    if (!held_.contains(event.detail)) {
        return;
    }
    release(event.detail);
    if (event.detail == grabbing_) {
        // With this key the keyboard goes back to everyone: of others nothing more will be heard.
        while (!held_.empty()) {
            release(held_.begin()->first);
        }
    }
}

void X11HotKeyService::release(xcb_keycode_t keycode)
{
    const auto found = held_.find(keycode);
    const auto registration = registrations_.find(found->second);
    held_.erase(found);
    if (registration != registrations_.end()) {
        send(shortcuts::HotKeyID(registration->second.id), false);
    }
}

void X11HotKeyService::keyboardEvent(const xcb_generic_event_t& event)
{
    const auto kind = as<xcb_xkb_map_notify_event_t>(event).xkbType; // In the same place in all.
    if (kind == XCB_XKB_NEW_KEYBOARD_NOTIFY || kind == XCB_XKB_MAP_NOTIFY) {
        isKeyboardChanged_ = true;
    } else if (kind == XCB_XKB_STATE_NOTIFY) {
        const auto change = as<xcb_xkb_state_notify_event_t>(event);
        if (characters_.setLayout(change.group)) {
            layoutListeners_.callAll();
        }
    }
}

void X11HotKeyService::reloadKeyboard()
{
    const auto before = keyboard_.modifiers();
    auto changed = keyboard_;
    if (!changed.load()) {
        log_.notice("The changed keyboard layout can't be read: the one before is used");
        return;
    }
    // Grabs are by key and modifier bits, so that most changes leave them as they are.
    if (changed.modifiers() == before) {
        keyboard_ = std::move(changed);
    } else {
        ungrabAll();
        keyboard_ = std::move(changed);
        grabAll();
    }
    characters_.setKeymap(keyboard_.keymap());
    characters_.setLayout(keyboard_.layout());
    layoutListeners_.callAll();
}

void X11HotKeyService::ungrabAll()
{
    for (auto& [ref, registration] : registrations_) {
        if (std::exchange(registration.isGrabbed, false)) {
            ungrab(registration.combination);
        }
    }
    held_.clear();
}

void X11HotKeyService::grabAll()
{
    for (auto& [ref, registration] : registrations_) {
        registration.isGrabbed = isGrabbed(registration.combination) ||
                                 grab(registration.combination) == shortcuts::noErr;
        if (!registration.isGrabbed) {
            log_.notice("A shortcut is lost: on the changed keyboard another program holds it, or "
                        "there is no such key");
        }
    }
}

void X11HotKeyService::lost()
{
    log_.notice("The X server has gone: no more shortcuts");
    watch_.cancel();
    connection_.reset();
    held_.clear();
    supportListeners_.callAll();
}

} // namespace fadewell
