#include "control/cli/Doctor.h"

#include "control/values/BusNames.h"
#include "control/values/JsonOutput.h"
#include "control/values/PlainText.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>

#include <cstdlib>
#include <fmt/format.h>
#include <string_view>

namespace fadewell::cli {
namespace {

using enum Finding::Verdict;

constexpr int patience = 3000; // milliseconds

std::optional<QVariant> readProperty(const QDBusConnection& bus,
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

bool isOnBus(const QDBusConnection& bus, const char* service)
{
    const QDBusReply<bool> reply = bus.interface()->isServiceRegistered(service);
    return reply.isValid() && reply.value();
}

Finding programFinding(const QDBusConnection& bus, const std::string& version)
{
    const auto running = readProperty(bus, bus::service, bus::path, bus::interface, "Version");
    if (!running) {
        return {"fadewell",
                limited,
                fmt::format("Fadewell {}, not running. Start it with: fadewell", version)};
    }
    const auto text = running->toString().toStdString();
    return text == version
               ? Finding{"fadewell", good, fmt::format("Fadewell {}, running.", version)}
               : Finding{"fadewell",
                         limited,
                         fmt::format("Fadewell {} runs, but {} is installed: quit and start it.",
                                     text,
                                     version)};
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
    const auto portal = readProperty(bus,
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

std::string_view word(Finding::Verdict verdict)
{
    return verdict == good ? "good" : verdict == limited ? "limited" : "bad";
}

} // namespace

Output doctor(const std::string& version, const Diagnose& diagnose)
{
    std::vector<Finding> findings;
    const auto bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        findings = {programFinding(bus, version), trayFinding(bus), shortcutsFinding(bus)};
    } else {
        findings.push_back({"bus",
                            limited,
                            "There is no session bus: fadewellctl, tray icons and shortcuts of the "
                            "desktop don't work."});
    }
    if (diagnose) {
        const auto more = diagnose();
        findings.insert(findings.end(), more.begin(), more.end());
    }
    Output output{OrderedJson::array(), ""};
    for (const auto& finding : findings) {
        output.json.push_back(
            {{"id", finding.id}, {"verdict", word(finding.verdict)}, {"text", finding.text}});
        output.text += fmt::format("{:<8} {}\n", word(finding.verdict), plainText(finding.text));
    }
    return output;
}

} // namespace fadewell::cli
