#include "platform/linux/desktop/WaylandFrontWindow.h"

#include "platform/linux/desktop/WaylandToplevels.h"

#include <memory>
#include <unistd.h>
#include <utility>
#include <wayland-client.h>

namespace fadewell {
namespace {

struct Disconnect {
    void operator()(wl_display* display) const { wl_display_disconnect(display); }
};

} // namespace

WaylandFrontWindow::WaylandFrontWindow(std::string ownAppID, std::string display)
    : ownAppID_(std::move(ownAppID))
    , display_(std::move(display))
{}

bool WaylandFrontWindow::isTold()
{
    return ask().isTold;
}

std::optional<FrontWindow::Window> WaylandFrontWindow::window()
{
    return ask().window;
}

WaylandFrontWindow::Answer WaylandFrontWindow::ask() const
{
    const std::unique_ptr<wl_display, Disconnect> display(
        wl_display_connect(display_.empty() ? nullptr : display_.c_str()));
    if (!display) {
        return {};
    }
    WaylandToplevels toplevels(display.get());
    if (!toplevels.read()) {
        return {};
    }
    Answer answer{.isTold = true};
    if (const auto appID = toplevels.activated()) {
        answer.window = Window{.pid = {}, .appID = *appID};
        if (*appID == ownAppID_) {
            answer.window->pid = getpid();
        }
    }
    return answer;
}

} // namespace fadewell
