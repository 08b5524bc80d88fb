#include "main/gui/Display.h"

#include <QDir>
#include <QLibraryInfo>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace fadewell {
namespace {

std::string variable(const char* name)
{
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

bool doesXAnswer()
{
    if (variable("DISPLAY").empty()) {
        return false;
    }
    const std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> connection(
        xcb_connect(nullptr, nullptr), xcb_disconnect);
    return xcb_connection_has_error(connection.get()) == 0;
}

bool doesWaylandAnswer()
{
    auto path = variable("WAYLAND_DISPLAY");
    if (path.empty()) {
        return false;
    }
    if (path.front() != '/') {
        path = variable("XDG_RUNTIME_DIR") + '/' + path;
    }
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    if (path.size() >= sizeof address.sun_path) {
        return false;
    }
    path.copy(address.sun_path, path.size());
    const int socketID = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool answers =
        connect(socketID, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(socketID);
    return answers;
}

/// Nothing that Qt depends on brings its Wayland half.
bool isWaylandInstalled()
{
    const QDir platforms(QLibraryInfo::path(QLibraryInfo::PluginsPath) + "/platforms");
    return !platforms.entryList({"libqwayland*"}, QDir::Files).isEmpty();
}

} // namespace

bool canOpenWindows()
{
    if (!variable("QT_QPA_PLATFORM").empty()) {
        return true; // Chosen by hand.
    }
    return doesXAnswer() || (doesWaylandAnswer() && isWaylandInstalled());
}

} // namespace fadewell
