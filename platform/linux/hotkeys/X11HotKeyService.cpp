#include "platform/linux/hotkeys/X11HotKeyService.h"

#include "platform/linux/hotkeys/KeyCodeMap.h"
#include "shortcuts/Modifiers.h"
#include "shortcuts/SpecialKey.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace fadewell {

using namespace shortcuts;

std::shared_ptr<X11HotKeyService> X11HotKeyService::create(const std::string& display,
                                                           std::shared_ptr<SerialQueue> mainQueue,
                                                           const DescriptorWatch& watch,
                                                           std::string& error)
{
    const std::shared_ptr<X11HotKeyService> made(new X11HotKeyService(std::move(mainQueue)));
    if (!made->connect(display, error)) {
        return nullptr;
    }
    made->watch_ =
        watch(xcb_get_file_descriptor(made->connection_.get()), [weak = std::weak_ptr(made)] {
            if (const auto self = weak.lock()) {
                self->readEvents();
            }
        });
    return made;
}

X11HotKeyService::X11HotKeyService(std::shared_ptr<SerialQueue> mainQueue)
    : mainQueue_(std::move(mainQueue))
{}

X11HotKeyService::~X11HotKeyService()
{
    watch_.cancel(); // Before the descriptor closes.
}

bool X11HotKeyService::connect(const std::string& display, std::string& error)
{
    int screen = 0;
    connection_.reset(xcb_connect(display.empty() ? nullptr : display.c_str(), &screen));
    if (xcb_connection_has_error(connection_.get()) != 0) {
        error = "the X server can't be reached";
        return false;
    }
    auto roots = xcb_setup_roots_iterator(xcb_get_setup(connection_.get()));
    for (; screen > 0 && roots.rem > 1; --screen) {
        xcb_screen_next(&roots);
    }
    if (roots.rem == 0 || !keyboard_.setUp(connection_.get())) {
        error = "the X server has no usable keyboard extension";
        return false;
    }
    root_ = roots.data->root;
    characters_.setKeymap(keyboard_.keymap());
    characters_.setLayout(keyboard_.layout());
    return true;
}

HotKeyService::Support X11HotKeyService::support() const
{
    return connection_ ? Support::any : Support::none;
}

std::optional<X11HotKeyService::Combination> X11HotKeyService::combination(std::uint32_t keyCode,
                                                                           std::uint32_t modifiers)
{
    const auto evdev = evdevCode(keyCode);
    // The server's protocol ends at 255; beyond are keys such as fn itself.
    if (!evdev || *evdev + xKeycodeOffset > std::numeric_limits<xcb_keycode_t>::max()) {
        return std::nullopt;
    }
    return Combination{static_cast<xcb_keycode_t>(*evdev + xKeycodeOffset),
                       withoutImpliedFunction(keyCode, normalizedModifiers(modifiers))};
}

bool X11HotKeyService::isGrabbed(const Combination& combination) const
{
    return std::any_of(registrations_.begin(), registrations_.end(), [&](const auto& entry) {
        return entry.second.combination == combination && entry.second.isGrabbed;
    });
}

OSStatus X11HotKeyService::registerEventHotKey(std::uint32_t keyCode,
                                               std::uint32_t modifiers,
                                               HotKeyID id,
                                               EventHotKeyRef& out)
{
    mainQueue_->assertCurrent();
    const auto wanted = combination(keyCode, modifiers);
    if (!connection_ || !wanted) {
        return eventHotKeyInvalidErr;
    }
    if (!isGrabbed(*wanted)) {
        if (const auto status = grab(*wanted); status != noErr) {
            return status;
        }
    }
    out = ++lastRef_;
    registrations_.emplace(out, Registration{*wanted, id, true});
    return noErr;
}

OSStatus X11HotKeyService::unregisterEventHotKey(EventHotKeyRef ref)
{
    mainQueue_->assertCurrent();
    const auto found = registrations_.find(ref);
    if (found == registrations_.end()) {
        return eventHotKeyInvalidErr;
    }
    const auto registration = found->second;
    registrations_.erase(found);
    std::erase_if(held_, [ref](const auto& entry) { return entry.second == ref; });
    if (connection_ && registration.isGrabbed && !isGrabbed(registration.combination)) {
        ungrab(registration.combination);
    }
    return noErr;
}

bool X11HotKeyService::isHeldElsewhere(const Shortcut& shortcut)
{
    const auto wanted = combination(static_cast<std::uint32_t>(shortcut.carbonKeyCode),
                                    normalizedModifiers(shortcut.carbonModifiers));
    if (!connection_ || !wanted || isGrabbed(*wanted)) {
        return false;
    }
    const auto status = grab(*wanted);
    if (status == noErr) {
        ungrab(*wanted);
    }
    return status == eventHotKeyExistsErr;
}

OSStatus X11HotKeyService::grab(const Combination& combination)
{
    bool isPossible = false;
    const auto state = keyboard_.modifiers().state(combination.modifiers, isPossible);
    if (!isPossible) {
        return eventHotKeyInvalidErr;
    }
    // All asked before the first answer is read: one round trip.
    std::vector<xcb_void_cookie_t> requests;
    for (const auto locks : keyboard_.modifiers().lockVariants()) {
        requests.push_back(xcb_grab_key_checked(connection_.get(),
                                                0,
                                                root_,
                                                static_cast<std::uint16_t>(state | locks),
                                                combination.keycode,
                                                XCB_GRAB_MODE_ASYNC,
                                                XCB_GRAB_MODE_ASYNC));
    }
    OSStatus status = noErr;
    for (const auto request : requests) {
        const XcbReply<xcb_generic_error_t> error(xcb_request_check(connection_.get(), request));
        if (error) {
            status = error->error_code == XCB_ACCESS ? eventHotKeyExistsErr : eventHotKeyInvalidErr;
        }
    }
    if (status != noErr) {
        ungrab(combination.keycode, state); // Only some of them may be held by others.
    }
    readEventsSoon();
    return status;
}

void X11HotKeyService::ungrab(const Combination& combination)
{
    bool isPossible = false;
    const auto state = keyboard_.modifiers().state(combination.modifiers, isPossible);
    if (isPossible) {
        ungrab(combination.keycode, state);
    }
}

void X11HotKeyService::ungrab(xcb_keycode_t keycode, std::uint16_t state)
{
    for (const auto locks : keyboard_.modifiers().lockVariants()) {
        const auto grabbed = static_cast<std::uint16_t>(state | locks);
        xcb_ungrab_key(connection_.get(), keycode, root_, grabbed);
    }
    // Any answer: when it is there, whoever asks next finds the combination free.
    const XcbReply<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(connection_.get(), xcb_get_input_focus(connection_.get()), {}));
    readEventsSoon();
}

} // namespace fadewell
