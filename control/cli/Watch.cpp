#include "control/cli/Watch.h"

#include "control/cli/Failure.h"
#include "control/values/BusNames.h"
#include "control/values/Tables.h"

#include <QDBusServiceWatcher>
#include <QEventLoop>

#include <cstdio>
#include <utility>

namespace fadewell::cli {
namespace {

void print(const std::string& text)
{
    std::fputs(text.c_str(), stdout);
    std::fflush(stdout);
}

} // namespace

Watch::Watch(const MixerClient& client, bool isJson)
    : client_(client)
    , isJson_(isJson)
{}

void Watch::run()
{
    QEventLoop loop;
    auto connection = client_.connection();
    QDBusServiceWatcher watcher(
        bus::service, connection, QDBusServiceWatcher::WatchForUnregistration);
    connect(&watcher, &QDBusServiceWatcher::serviceUnregistered, &loop, &QEventLoop::quit);
    // Listens before it looks, so that no change falls between the two.
    connection.connect(
        bus::service, bus::path, bus::interface, bus::changedSignal, this, SLOT(refresh()));
    last_ = client_.state();
    printFirst();
    if (client_.isRunning()) {
        loop.exec();
    }
    throw Failure(ExitCode::notRunning, "Fadewell has quit.");
}

void Watch::refresh()
{
    MixerState next;
    try {
        next = client_.state();
    } catch (const Failure&) {
        return; // The program is ending; the loop hears of it next.
    }
    if (next != last_) {
        printNext(next);
        last_ = std::move(next);
    }
}

void Watch::printFirst() const
{
    if (isJson_) {
        print(dump(toJson(last_)) + '\n');
        return;
    }
    print(appTable(last_.apps) + microphoneLine(last_.microphone) + callModeLine(last_.callMode));
}

void Watch::printNext(const MixerState& next) const
{
    print(isJson_ ? dump(toJson(next)) + '\n' : describeChanges(last_, next));
}

} // namespace fadewell::cli
