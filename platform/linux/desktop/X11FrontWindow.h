#pragma once

#include "platform/linux/desktop/FrontWindow.h"

#include <xcb/xcb.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace fadewell {

/// The active window of an X session, as its window manager keeps it. Connects when it is asked
/// for the first time and after the server came back.
class X11FrontWindow final : public FrontWindow {
public:
    /// As in the environment; empty for the environment's.
    explicit X11FrontWindow(std::string display = {});

    [[nodiscard]] bool isTold() override;
    [[nodiscard]] std::optional<Window> window() override;

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    [[nodiscard]] bool connect();
    [[nodiscard]] std::vector<std::uint32_t>
    numbers(xcb_window_t window, xcb_atom_t property, xcb_atom_t type);
    [[nodiscard]] std::string text(xcb_window_t window, xcb_atom_t property);
    [[nodiscard]] bool isLocal(xcb_window_t window);

    const std::string display_;
    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    xcb_window_t root_ = 0;
    xcb_atom_t activeWindow_ = 0;
    xcb_atom_t windowPID_ = 0;
};

} // namespace fadewell
