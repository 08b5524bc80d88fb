#pragma once

#include "base/Logger.h"
#include "base/SerialQueue.h"
#include "platform/linux/hotkeys/DescriptorWatch.h"
#include "platform/linux/hotkeys/LinuxHotKeyService.h"
#include "platform/linux/hotkeys/XKeyboard.h"
#include "platform/linux/hotkeys/XcbReply.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace fadewell {

/// Shortcuts on an X server: grabbed keys, over a connection of their own. Nothing wakes up but for
/// a grabbed key and a change of the keyboard. [main queue]
class X11HotKeyService final : public LinuxHotKeyService,
                               public std::enable_shared_from_this<X11HotKeyService> {
public:
    /// `display` as in the environment; empty for the environment's. Null, with `error` saying why,
    /// where there is no usable server.
    [[nodiscard]] static std::shared_ptr<X11HotKeyService>
    create(const std::string& display,
           std::shared_ptr<SerialQueue> mainQueue,
           const DescriptorWatch& watch,
           std::string& error);
    ~X11HotKeyService() override;
    X11HotKeyService(const X11HotKeyService&) = delete;
    X11HotKeyService& operator=(const X11HotKeyService&) = delete;

    /// None once the server has gone.
    [[nodiscard]] Support support() const override;
    OSStatus registerEventHotKey(std::uint32_t keyCode,
                                 std::uint32_t modifiers,
                                 shortcuts::HotKeyID id,
                                 shortcuts::EventHotKeyRef& out) override;
    OSStatus unregisterEventHotKey(shortcuts::EventHotKeyRef ref) override;
    [[nodiscard]] bool isHeldElsewhere(const shortcuts::Shortcut& shortcut) override;

private:
    struct Connection {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };
    /// A key with the modifiers that a shortcut is stored with.
    struct Combination {
        xcb_keycode_t keycode = 0;
        std::uint32_t modifiers = 0; ///< classic
        auto operator<=>(const Combination&) const = default;
    };
    struct Registration {
        Combination combination;
        shortcuts::HotKeyID id;
        bool isGrabbed = false;
    };
    using Registrations = std::map<shortcuts::EventHotKeyRef, Registration>;

    explicit X11HotKeyService(std::shared_ptr<SerialQueue> mainQueue);
    [[nodiscard]] bool connect(const std::string& display, std::string& error);

    [[nodiscard]] static std::optional<Combination> combination(std::uint32_t keyCode,
                                                                std::uint32_t modifiers);
    [[nodiscard]] bool isGrabbed(const Combination& combination) const;
    [[nodiscard]] OSStatus grab(const Combination& combination);
    void ungrab(const Combination& combination);
    void ungrab(xcb_keycode_t keycode, std::uint16_t state);
    void ungrabAll();
    void grabAll();

    void readEvents();
    /// For events that came in while a reply was waited for: nothing announces them any more.
    void readEventsSoon();
    void handle(const xcb_generic_event_t& event);
    void pressed(const xcb_key_press_event_t& event);
    void released(const xcb_key_release_event_t& event);
    void release(xcb_keycode_t keycode);
    void keyboardEvent(const xcb_generic_event_t& event);
    void reloadKeyboard();
    void lost();

    const Logger log_{"shortcuts"};
    const std::shared_ptr<SerialQueue> mainQueue_;
    std::unique_ptr<xcb_connection_t, Connection> connection_; ///< null once it is lost
    xcb_window_t root_ = 0;
    XKeyboard keyboard_;
    bool isKeyboardChanged_ = false;
    shortcuts::EventHotKeyRef lastRef_ = 0;
    Registrations registrations_;
    std::map<xcb_keycode_t, shortcuts::EventHotKeyRef> held_; ///< pressed and not yet released
    xcb_keycode_t grabbing_ = 0; ///< the first of them: until its release all keys come here
    Subscription watch_;
};

} // namespace fadewell
