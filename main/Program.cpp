#include "main/Program.h"

#include "base/SystemClock.h"
#include "base/ThreadQueue.h"
#include "control/QtMainQueue.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QStandardPaths>

#include <cstdio>
#include <utility>

namespace fadewell {
namespace {

constexpr int succeeded = 0;
constexpr int failed = 1;

int sayThatItRuns()
{
    std::puts("Fadewell is running already.");
    return succeeded;
}

} // namespace

Program::Program(Options options, TerminationSignals& termination)
    : options_(options)
    , termination_(termination)
    , bus_(QDBusConnection::sessionBus())
    , claim_(bus_)
{}

int Program::run()
{
    if (const auto status = deferToOther()) {
        return *status;
    }
    if (!compose()) {
        return failed;
    }
    if (const auto status = goOnBus()) {
        return *status;
    }
    launch();
    const int status = QCoreApplication::exec();
    composition_->terminate();
    log_.notice("Ended");
    return status;
}

std::optional<int> Program::deferToOther()
{
    if (!bus_.isConnected()) {
        log_.error("No session bus ({}): fadewellctl can't reach this instance",
                   bus_.lastError().message().toStdString());
        return lockWithoutBus();
    }
    return claim_.isTaken() ? std::optional(tellOther()) : std::nullopt;
}

std::optional<int> Program::lockWithoutBus()
{
    const auto folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    lock_ = std::make_unique<QLockFile>(folder + "/fadewell.lock");
    lock_->setStaleLockTime(0); // Only the death of its owner makes it stale.
    if (lock_->tryLock() || lock_->error() != QLockFile::LockFailedError) {
        return std::nullopt; // Better unprotected than not running in a folder without a place.
    }
    return sayThatItRuns();
}

int Program::tellOther()
{
    if (!claim_.reopenOther()) {
        std::fputs("fadewell: another instance runs but does not answer.\n", stderr);
        return failed;
    }
    return sayThatItRuns();
}

bool Program::compose()
{
    const auto clock = std::make_shared<SystemClock>();
    const QueueFactory makeQueue = [clock](const std::string& label) {
        return std::make_shared<ThreadQueue>(label, clock);
    };
    mainQueue_ = std::make_shared<QtMainQueue>(clock);
    std::string error;
    auto platform = makePlatform(mainQueue_, makeQueue, error);
    if (!platform) {
        log_.info("Can't start: {}", error); // For the journal; people read the next line.
        std::fprintf(stderr, "fadewell: can't start: %s\n", error.c_str());
        return false;
    }
    composition_ =
        std::make_unique<Composition>(std::move(*platform), mainQueue_, clock, makeQueue);
    return true;
}

std::optional<int> Program::goOnBus()
{
    if (!bus_.isConnected()) {
        return std::nullopt;
    }
    service_ = std::make_unique<MixerService>(
        bus_,
        MixerService::Parts{.model = composition_->model(),
                            .mainQueue = mainQueue_,
                            .workspace = composition_->platform().workspace,
                            .tappability = composition_->platform().tappability,
                            .version = FADEWELL_VERSION,
                            .quit = [] { QCoreApplication::quit(); },
                            .reopened =
                                [log = log_] {
                                    log.notice("Started again while running");
                                }});
    const bool isPublished = service_->publish();
    const auto outcome = claim_.claim();
    if (outcome == InstanceClaim::Outcome::taken) {
        return tellOther();
    }
    if (!isPublished || outcome == InstanceClaim::Outcome::failed) {
        log_.error("The session bus refused the name: fadewellctl can't reach this instance");
    }
    return std::nullopt;
}

void Program::launch()
{
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, [this] {
        composition_->terminate();
    });
    composition_->launch([this] {
        termination_.deliver([this](int signal) {
            log_.notice("Ending after signal {}", signal);
            QCoreApplication::exit(succeeded);
        });
    });
    if (!options_.isHeadless && !options_.isBackground) {
        log_.notice("Running without a window; fadewellctl drives it");
    }
    log_.notice("Running");
}

} // namespace fadewell
