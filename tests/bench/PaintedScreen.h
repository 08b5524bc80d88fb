#pragma once

#include "tests/integration/keyboard/XServer.h"

#include <cstdint>
#include <map>
#include <set>

namespace fadewell::integration {

/// A screen of its own, with a keyboard and without a window manager, that tells when a program has
/// drawn its window.
class PaintedScreen {
public:
    /// Sets DISPLAY for what is started from here on. Throws std::runtime_error without a server.
    PaintedScreen();
    ~PaintedScreen();
    PaintedScreen(const PaintedScreen&) = delete;
    PaintedScreen& operator=(const PaintedScreen&) = delete;

    /// A window of some size is there, and something is drawn in the middle of it. Looks once.
    [[nodiscard]] bool isPainted();
    /// Looks once.
    [[nodiscard]] bool isEmpty();
    [[nodiscard]] XServer& server() { return server_; }

private:
    struct Size {
        std::uint16_t width = 0;
        std::uint16_t height = 0;
    };

    void takeEvents();
    [[nodiscard]] bool isPainted(xcb_window_t window, Size size);

    XServer server_;
    xcb_connection_t* connection_;
    std::map<xcb_window_t, Size> sizes_; ///< of all windows, also of those that aren't shown
    std::set<xcb_window_t> shown_;
};

} // namespace fadewell::integration
