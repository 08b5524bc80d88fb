#include "audio/MicrophoneController.h"
#include "audio/TapManager.h"
#include "base/Logger.h"
#include "base/SystemClock.h"
#include "base/ThreadQueue.h"
#include "main/Platform.h"
#include "main/QtDescriptorWatch.h"
#include "platform/linux/FileUserDefaults.h"
#include "platform/linux/LinuxLogSink.h"
#include "platform/linux/LinuxProcessLookup.h"
#include "platform/linux/XdgPaths.h"
#include "platform/linux/XdgWorkspace.h"
#include "platform/linux/bus/OnScreenMessages.h"
#include "platform/linux/bus/PortalHotKeyService.h"
#include "platform/linux/desktop/Session.h"
#include "platform/linux/desktop/SwayFrontWindow.h"
#include "platform/linux/desktop/WaylandFrontWindow.h"
#include "platform/linux/desktop/X11FrontWindow.h"
#include "platform/linux/doctor/LinuxInspection.h"
#include "platform/linux/hotkeys/X11HotKeyService.h"
#include "platform/linux/identity/AppIdentities.h"
#include "platform/linux/login/AutostartItem.h"
#include "platform/linux/pipewire/PipeWireHardware.h"
#include "platform/linux/portal/PortalLoginItem.h"
#include "platform/linux/supervision/Supervisor.h"
#include "platform/linux/systemkeys/SystemKeys.h"

#include <QDBusConnection>

#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace fadewell {
namespace {

constexpr unsigned giveBackSeconds = 10;

std::shared_ptr<LinuxHotKeyService> makeHotKeys(const std::shared_ptr<SerialQueue>& mainQueue)
{
    const auto display = Session::current().display;
    if (display == Session::Display::x11) {
        std::string error;
        if (auto keys = X11HotKeyService::create({}, mainQueue, qtDescriptorWatch(), error)) {
            keys->setSystemKeys([] { return SystemKeys::read(); });
            return keys;
        }
        Logger("shortcuts").notice("No keyboard shortcuts: {}", error);
    }
    if (display == Session::Display::wayland) {
        // A connection of their own: a portal wants to be told who asks before anything else.
        const auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "portal");
        return std::make_shared<PortalHotKeyService>(bus);
    }
    return std::make_shared<LinuxHotKeyService>();
}

std::unique_ptr<FrontWindow> makeFrontWindow()
{
    const auto session = Session::current();
    if (session.display == Session::Display::x11) {
        return std::make_unique<X11FrontWindow>();
    }
    if (!session.swaySocket.empty()) {
        return std::make_unique<SwayFrontWindow>(session.swaySocket); // Tells processes, too.
    }
#ifdef FADEWELL_WAYLAND
    if (session.display == Session::Display::wayland) {
        return std::make_unique<WaylandFrontWindow>("app.fadewell.Fadewell");
    }
#endif
    return nullptr;
}

/// What a login starts: `fadewell`, also when this is the program with windows that it became.
std::filesystem::path startedProgram(const std::filesystem::path& self)
{
    for (const auto* folder : {".", FADEWELL_PROGRAMS}) {
        std::error_code error;
        auto program = std::filesystem::canonical(self.parent_path() / folder / "fadewell", error);
        if (!error) {
            return program;
        }
    }
    return self;
}

bool isFlatpak()
{
    std::error_code ignored;
    return std::filesystem::exists("/.flatpak-info", ignored);
}

std::shared_ptr<PipeWireHardware> makeHardware(const std::shared_ptr<AppIdentities>& identities,
                                               std::shared_ptr<Heartbeat> heartbeat,
                                               std::string& error)
{
    PipeWireHardware::Options options;
    options.connection.heartbeat = std::move(heartbeat);
    options.journalFolder = XdgPaths::current().ownRuntimeFolder();
    return PipeWireHardware::create(std::move(options), identities, error);
}

std::shared_ptr<FileUserDefaults> makeDefaults(const std::shared_ptr<SerialQueue>& queue)
{
    const auto paths = XdgPaths::current();
    const auto file = paths.settingsFile();
    return std::make_shared<FileUserDefaults>(
        file, paths.ownRuntimeFolder() / file.filename(), queue);
}

/// After the last failure there is nobody else to give back what it left taken. Without windows and
/// their libraries, in a process of its own, which the system ends should the sound server hang.
int giveBack()
{
    alarm(giveBackSeconds);
    std::string error;
    const auto hardware = makeHardware(std::make_shared<AppIdentities>(), nullptr, error);
    if (!hardware) {
        Logger("main").notice("Nothing can be given back: {}", error);
        return 1;
    }
    const auto clock = std::make_shared<SystemClock>();
    const auto defaults =
        makeDefaults(std::make_shared<ThreadQueue>("app.fadewell.defaults", clock));
    MicrophoneController::restoreLeftMuted(*hardware, *defaults);
    if (TapManager::removeLeftovers(*hardware) > 0) {
        hardware->wakePlayers();
    }
    return 0;
}

std::optional<std::string> variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value ? std::optional<std::string>(value) : std::nullopt;
}

} // namespace

std::shared_ptr<LogSink> makeLogSink(bool isVerbose)
{
    return std::make_shared<LinuxLogSink>(LinuxLogSink::preferredDestination(), isVerbose);
}

int runSupervised(const std::function<int(const std::shared_ptr<Heartbeat>& heartbeat)>& program)
{
    std::optional<Supervisor> supervisor;
    try {
        supervisor.emplace();
    } catch (const std::system_error& error) {
        Logger("main").error("Runs without a supervisor: {}", error.what());
        return program(nullptr);
    }
    return supervisor->run(program, giveBack);
}

std::optional<Platform> makePlatform(const std::shared_ptr<SerialQueue>& mainQueue,
                                     const QueueFactory& makeQueue,
                                     std::shared_ptr<Heartbeat> heartbeat,
                                     std::string& error)
{
    const auto identities = std::make_shared<AppIdentities>();
    const auto hardware = makeHardware(identities, std::move(heartbeat), error);
    if (!hardware) {
        return std::nullopt;
    }
    Platform platform;
    platform.hardware = hardware;
    platform.processLookup = std::make_shared<LinuxProcessLookup>(identities);
    platform.tappability = hardware;
    platform.startGate = hardware;
    platform.soundServer = hardware;
    platform.inspection = std::make_shared<LinuxInspection>(hardware);
    const auto workspace = std::make_shared<XdgWorkspace>(identities, mainQueue, makeFrontWindow());
    platform.workspace = workspace;
    platform.defaults = makeDefaults(makeQueue("app.fadewell.defaults"));
    const auto messages =
        std::make_shared<OnScreenMessages>(QDBusConnection::sessionBus(), platform.defaults);
    workspace->onAnnounced([messages](std::string_view text) { messages->show(text); });
    platform.hotKeys = makeHotKeys(mainQueue);
    if (isFlatpak()) {
        platform.loginItemService =
            std::make_shared<PortalLoginItem>(QDBusConnection::sessionBus(), platform.defaults);
    } else {
        auto place = AutostartItem::Place::current(XdgPaths::current(), variable);
        place.program = startedProgram(place.program);
        platform.loginItemService = std::make_shared<AutostartItem>(std::move(place));
    }
    return platform;
}

} // namespace fadewell
