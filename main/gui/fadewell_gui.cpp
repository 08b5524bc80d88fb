#include "main/Entry.h"
#include "main/Program.h"
#include "main/gui/Display.h"
#include "ui/style/Language.h"
#include "ui/windows/DesktopWindows.h"

#include <QApplication>
#include <QCoreApplication>

namespace {

using namespace fadewell;

int runOnDisplay(int argc,
                 char** argv,
                 const Options& options,
                 TerminationSignals& termination,
                 const std::shared_ptr<Heartbeat>& heartbeat)
{
    qputenv("NO_AT_BRIDGE", "1"); // A desktop theme's toolkit would show up as a second program.
    QCoreApplication::setApplicationName("Fadewell");
    QCoreApplication::setApplicationVersion(FADEWELL_VERSION);
    QGuiApplication::setDesktopFileName("app.fadewell.Fadewell");
    QGuiApplication::setQuitOnLastWindowClosed(false);
    if (!qEnvironmentVariableIsSet("QT_QUICK_BACKEND")) {
        qputenv("QT_QUICK_BACKEND", "software"); // A third of the memory, and nothing needs more.
        if (!qEnvironmentVariableIsSet("QT_WAYLAND_CLIENT_BUFFER_INTEGRATION")) {
            // On Wayland Qt would load a GPU's drivers all the same: 50 MB. It logs that it fails.
            qputenv("QT_WAYLAND_CLIENT_BUFFER_INTEGRATION", "none");
        }
    }
    const QApplication application(argc, argv);
    installLanguage();
    const auto makeWindows = [&options](const WindowsParts& parts) -> std::shared_ptr<AppWindows> {
        auto windows = std::make_shared<DesktopWindows>(parts, QStringLiteral(FADEWELL_BUILD));
        windows->showIcon();
        if (options.isShowing) {
            windows->openMixerAtStart();
        }
        return windows;
    };
    return Program(options, termination, heartbeat, makeWindows).run();
}

} // namespace

int main(int argc, char** argv)
{
    return enter(argc,
                 argv,
                 [&](const Options& options,
                     TerminationSignals& termination,
                     const std::shared_ptr<Heartbeat>& heartbeat) {
                     if (!options.isHeadless && canOpenWindows()) {
                         return runOnDisplay(argc, argv, options, termination, heartbeat);
                     }
                     const QCoreApplication application(argc, argv);
                     return Program(options, termination, heartbeat).run();
                 });
}
