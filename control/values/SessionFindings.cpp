#include "control/values/SessionFindings.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>

#include <cstdlib>
#include <string_view>

namespace fadewell {
namespace {

using enum Finding::Verdict;

constexpr int patience = 3000; // milliseconds

bool isOnBus(const QDBusConnection& bus, const char* service)
{
    const QDBusReply<bool> reply = bus.interface()->isServiceRegistered(service);
    return reply.isValid() && reply.value();
}

Finding trayFinding(const QDBusConnection& bus)
{
    return isOnBus(bus, "org.kde.StatusNotifierWatcher")
               ? Finding{"tray", good, "The desktop shows tray icons."}
               : Finding{"tray",
                         limited,
                         "The desktop offers no place for tray icons, or is too old to say. "
                         "fadewellctl works all the same."};
}

Finding shortcutsFinding(const QDBusConnection& bus)
{
    const char* const type = std::getenv("XDG_SESSION_TYPE");
    if (std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY") &&
        (!type || std::string_view(type) != "wayland"))
    {
        return {"shortcuts", good, "X11: programs can register global shortcuts."};
    }
    const auto portal = readBusProperty(bus,
                                        "org.freedesktop.portal.Desktop",
                                        "/org/freedesktop/portal/desktop",
                                        "org.freedesktop.portal.GlobalShortcuts",
                                        "version");
    return portal ? Finding{"shortcuts", good, "The desktop's portal offers global shortcuts."}
                  : Finding{"shortcuts",
                            limited,
                            "The desktop offers programs no global shortcuts: bind a key to a "
                            "command such as \"fadewellctl microphone toggle\" in its settings."};
}

} // namespace

std::optional<QVariant> readBusProperty(const QDBusConnection& bus,
                                        const char* service,
                                        const char* path,
                                        const char* interface,
                                        const char* name)
{
    auto message =
        QDBusMessage::createMethodCall(service, path, "org.freedesktop.DBus.Properties", "Get");
    message.setAutoStartService(false);
    message << interface << name;
    const QDBusReply<QDBusVariant> reply = bus.call(message, QDBus::Block, patience);
    return reply.isValid() ? std::optional(reply.value().variant()) : std::nullopt;
}

std::vector<Finding> sessionFindings(const QDBusConnection& bus)
{
    if (!bus.isConnected()) {
        return {{"bus",
                 limited,
                 "There is no session bus: fadewellctl, tray icons and shortcuts of the desktop "
                 "don't work."}};
    }
    return {trayFinding(bus), shortcutsFinding(bus)};
}

} // namespace fadewell
