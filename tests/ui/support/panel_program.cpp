#include "base/SystemClock.h"
#include "base/ThreadQueue.h"
#include "control/QtMainQueue.h"
#include "main/Composition.h"
#include "main/TerminationSignals.h"
#include "ui/PanelWindow.h"

#include <QGuiApplication>

#include <cstdio>
#include <string>

/// The engine on this session's sound and nothing but the panel, which is open from the start.
int main(int argc, char** argv)
{
    using namespace fadewell;
    TerminationSignals termination;
    const QGuiApplication application(argc, argv);
    const auto clock = std::make_shared<SystemClock>();
    const QueueFactory makeQueue = [clock](const std::string& label) {
        return std::make_shared<ThreadQueue>(label, clock);
    };
    const auto mainQueue = std::make_shared<QtMainQueue>(clock);
    std::string error;
    auto platform = makePlatform(mainQueue, makeQueue, nullptr, error);
    if (!platform) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return 1;
    }
    Composition composition(std::move(*platform), mainQueue, clock, makeQueue);
    composition.launch(
        [&] { termination.deliver([](int /*signal*/) { QCoreApplication::exit(); }); });
    PanelWindow panel(
        {composition.model(), composition.platform().workspace, composition.platform().tappability},
        {.quit = [] {
            QCoreApplication::quit();
        }});
    panel.show();
    const int status = QCoreApplication::exec();
    composition.terminate();
    return status;
}
