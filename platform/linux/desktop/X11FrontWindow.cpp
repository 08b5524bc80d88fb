#include "platform/linux/desktop/X11FrontWindow.h"

#include "platform/linux/hotkeys/XcbReply.h"

#include <array>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace fadewell {
namespace {

constexpr std::uint32_t longestText = 256; // in four bytes

xcb_atom_t atom(xcb_connection_t* connection, std::string_view name)
{
    const auto request =
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const XcbReply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection, request, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

std::string hostName()
{
    std::array<char, 256> name{};
    return gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

} // namespace

X11FrontWindow::X11FrontWindow(std::string display)
    : display_(std::move(display))
{}

bool X11FrontWindow::connect()
{
    if (connection_ && xcb_connection_has_error(connection_.get()) == 0) {
        return true;
    }
    int screen = 0;
    connection_.reset(xcb_connect(display_.empty() ? nullptr : display_.c_str(), &screen));
    if (xcb_connection_has_error(connection_.get()) != 0) {
        connection_.reset();
        return false;
    }
    auto roots = xcb_setup_roots_iterator(xcb_get_setup(connection_.get()));
    for (; screen > 0 && roots.rem > 1; --screen) {
        xcb_screen_next(&roots);
    }
    root_ = roots.data->root;
    activeWindow_ = atom(connection_.get(), "_NET_ACTIVE_WINDOW");
    windowPID_ = atom(connection_.get(), "_NET_WM_PID");
    return true;
}

std::vector<std::uint32_t>
X11FrontWindow::numbers(xcb_window_t window, xcb_atom_t property, xcb_atom_t type)
{
    const auto request = xcb_get_property(connection_.get(), 0, window, property, type, 0, 1);
    const XcbReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection_.get(), request, nullptr));
    if (!reply || reply->format != 32 || reply->value_len == 0) {
        return {};
    }
    return {*static_cast<std::uint32_t*>(xcb_get_property_value(reply.get()))};
}

std::string X11FrontWindow::text(xcb_window_t window, xcb_atom_t property)
{
    const auto request = xcb_get_property(
        connection_.get(), 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, longestText);
    const XcbReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection_.get(), request, nullptr));
    if (!reply || reply->format != 8) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

// A window of another machine carries a process identifier of that machine.
bool X11FrontWindow::isLocal(xcb_window_t window)
{
    const auto machine = text(window, XCB_ATOM_WM_CLIENT_MACHINE);
    return machine.empty() || machine == hostName();
}

bool X11FrontWindow::isTold()
{
    return connect() && !numbers(root_, activeWindow_, XCB_ATOM_WINDOW).empty();
}

std::optional<FrontWindow::Window> X11FrontWindow::window()
{
    const auto active =
        connect() ? numbers(root_, activeWindow_, XCB_ATOM_WINDOW) : std::vector<std::uint32_t>();
    if (active.empty() || active.front() == XCB_WINDOW_NONE) {
        return std::nullopt;
    }
    Window result;
    const auto pid = numbers(active.front(), windowPID_, XCB_ATOM_CARDINAL);
    if (!pid.empty() && isLocal(active.front())) {
        result.pid = static_cast<std::int32_t>(pid.front());
    }
    // Instance and class, each ended by a zero.
    const auto names = text(active.front(), XCB_ATOM_WM_CLASS);
    const auto second = names.find('\0');
    if (second != std::string::npos) {
        result.appID = names.c_str() + second + 1;
    }
    return result;
}

} // namespace fadewell
