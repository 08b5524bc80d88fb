#include "tests/integration/keyboard/XServer.h"

#include "tests/integration/support/Await.h"

#include <xcb/xtest.h>

#include <csignal>
#include <cstdlib>
#include <stdexcept>

namespace fadewell::integration {

XServer::XServer(const std::string& screen)
    : process_(std::make_unique<ChildProcess>(std::vector<std::string>{
          "Xvfb", "-displayfd", "1", "-screen", "0", screen, "-nolisten", "tcp", "-noreset"}))
{
    if (!await([this] { return process_->output().find('\n') != std::string::npos; })) {
        throw std::runtime_error("No X server: " + process_->errors());
    }
    display_ = ":" + process_->output();
    display_.pop_back();
    keyboard_.reset(xcb_connect(display_.c_str(), nullptr));
}

void XServer::run(std::vector<std::string> command)
{
    command.insert(command.begin(), {"env", "DISPLAY=" + display_});
    const auto result = runCommand(command);
    if (result.code != 0) {
        throw std::runtime_error(command[2] + ": " + result.errors);
    }
}

// Returns when the server has taken it.
void XServer::type(int keycode, bool isPressed)
{
    const auto kind = static_cast<std::uint8_t>(isPressed ? XCB_KEY_PRESS : XCB_KEY_RELEASE);
    const auto request = xcb_test_fake_input_checked(
        keyboard_.get(), kind, static_cast<std::uint8_t>(keycode), 0, XCB_WINDOW_NONE, 0, 0, 0);
    std::free(xcb_request_check(keyboard_.get(), request));
}

void XServer::strike(const std::vector<int>& keycodes)
{
    for (const int keycode : keycodes) {
        press(keycode);
    }
    for (auto keycode = keycodes.rbegin(); keycode != keycodes.rend(); ++keycode) {
        release(*keycode);
    }
}

void XServer::setLayout(const std::string& layout, const std::string& option)
{
    run({"setxkbmap", "-layout", layout, "-option", "", "-option", option});
}

void XServer::kill()
{
    process_->signal(SIGKILL);
    static_cast<void>(process_->wait());
}

OtherClient::OtherClient(const XServer& server)
    : connection_(xcb_connect(server.display().c_str(), nullptr))
    , root_(xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root)
{}

OtherClient::~OtherClient()
{
    xcb_disconnect(connection_);
}

bool OtherClient::grab(int keycode, std::uint16_t state)
{
    const auto request = xcb_grab_key_checked(connection_,
                                              0,
                                              root_,
                                              state,
                                              static_cast<xcb_keycode_t>(keycode),
                                              XCB_GRAB_MODE_ASYNC,
                                              XCB_GRAB_MODE_ASYNC);
    auto* error = xcb_request_check(connection_, request);
    const bool isGrabbed = error == nullptr;
    std::free(error);
    return isGrabbed;
}

void OtherClient::ungrab(int keycode, std::uint16_t state)
{
    const auto request =
        xcb_ungrab_key_checked(connection_, static_cast<xcb_keycode_t>(keycode), root_, state);
    std::free(xcb_request_check(connection_, request));
}

xcb_atom_t OtherClient::atom(std::string_view name)
{
    const auto request =
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    auto* reply = xcb_intern_atom_reply(connection_, request, nullptr);
    const auto result = reply->atom;
    std::free(reply);
    return result;
}

void OtherClient::set(xcb_window_t window,
                      xcb_atom_t property,
                      xcb_atom_t type,
                      std::string_view value)
{
    const auto size = static_cast<std::uint32_t>(value.size());
    const auto request = xcb_change_property_checked(
        connection_, XCB_PROP_MODE_REPLACE, window, property, type, 8, size, value.data());
    std::free(xcb_request_check(connection_, request));
}

void OtherClient::set(xcb_window_t window,
                      xcb_atom_t property,
                      xcb_atom_t type,
                      std::uint32_t value)
{
    const auto request = xcb_change_property_checked(
        connection_, XCB_PROP_MODE_REPLACE, window, property, type, 32, 1, &value);
    std::free(xcb_request_check(connection_, request));
}

xcb_window_t OtherClient::openWindow(std::uint32_t pid, std::string_view machine)
{
    constexpr std::string_view names("player\0Player\0", 14);
    const xcb_window_t window = xcb_generate_id(connection_);
    xcb_create_window(connection_,
                      XCB_COPY_FROM_PARENT,
                      window,
                      root_,
                      0,
                      0,
                      10,
                      10,
                      0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT,
                      0,
                      nullptr);
    set(window, atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, pid);
    set(window, XCB_ATOM_WM_CLIENT_MACHINE, XCB_ATOM_STRING, machine);
    set(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, names);
    return window;
}

void OtherClient::setActiveWindow(xcb_window_t window)
{
    set(root_, atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW, window);
}

bool OtherClient::hasFocus()
{
    auto* reply = xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr);
    const auto window = reply->focus;
    std::free(reply);
    return window != root_ && window != XCB_INPUT_FOCUS_POINTER_ROOT && window != XCB_NONE;
}

} // namespace fadewell::integration
