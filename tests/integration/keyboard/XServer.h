#pragma once

#include "tests/integration/support/ChildProcess.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace fadewell::integration {

/// An X server without a screen, whose keyboard a test plays.
class XServer {
public:
    /// `screen` is what it would show, as Xvfb takes it. Throws std::runtime_error when it doesn't
    /// come up.
    explicit XServer(const std::string& screen = "320x240x24");

    /// For DISPLAY.
    [[nodiscard]] const std::string& display() const { return display_; }

    /// X keycodes: the kernel's and 8.
    void press(int keycode) { type(keycode, true); }
    void release(int keycode) { type(keycode, false); }
    /// All of them down, then up in the opposite order.
    void strike(const std::vector<int>& keycodes);
    /// As setxkbmap takes it; all options are replaced.
    void setLayout(const std::string& layout, const std::string& option = {});
    /// Runs a program on this display. Throws std::runtime_error when it fails.
    void run(std::vector<std::string> command);

    void kill();

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    void type(int keycode, bool isPressed);

    std::unique_ptr<ChildProcess> process_;
    std::string display_;
    std::unique_ptr<xcb_connection_t, Disconnect> keyboard_;
};

/// Another program on the server, which may also play the window manager.
class OtherClient {
public:
    explicit OtherClient(const XServer& server);
    ~OtherClient();
    OtherClient(const OtherClient&) = delete;
    OtherClient& operator=(const OtherClient&) = delete;

    /// False when somebody else holds this one combination.
    [[nodiscard]] bool grab(int keycode, std::uint16_t state);
    void ungrab(int keycode, std::uint16_t state);

    /// A window of class "Player" that says it belongs to a process on a machine.
    [[nodiscard]] xcb_window_t openWindow(std::uint32_t pid, std::string_view machine);
    void setActiveWindow(xcb_window_t window);
    /// Whether any window has the keyboard.
    [[nodiscard]] bool hasFocus();

private:
    [[nodiscard]] xcb_atom_t atom(std::string_view name);
    void set(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, std::string_view value);
    void set(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, std::uint32_t value);

    xcb_connection_t* connection_;
    xcb_window_t root_;
};

} // namespace fadewell::integration
