#include "main/Program.h"

#include "audio/AudioPermission.h"
#include "base/SystemClock.h"
#include "base/ThreadQueue.h"
#include "control/QtMainQueue.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QStandardPaths>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace fadewell {
namespace {

constexpr int succeeded = 0;
constexpr int failed = 1;

/// Who starts a program passes on the right to take the keyboard in it; Qt uses it for the next
/// window.
constexpr const char* activationToken = "XDG_ACTIVATION_TOKEN";

/// Running, with windows.
Composition* onDisplay = nullptr;

/// Qt ends the program on the spot when the display has gone; the sound is left clean all the same.
void leaveDisplay()
{
    if (auto* composition = std::exchange(onDisplay, nullptr)) {
        composition->terminate();
    }
}

int sayThatItRuns()
{
    std::puts("Fadewell is running already.");
    return succeeded;
}

} // namespace

Program::Program(Options options,
                 TerminationSignals& termination,
                 std::shared_ptr<Heartbeat> heartbeat,
                 WindowsFactory makeWindows)
    : options_(options)
    , termination_(termination)
    , heartbeat_(std::move(heartbeat))
    , bus_(QDBusConnection::sessionBus())
    , claim_(bus_)
    , windowsFactory_(std::move(makeWindows))
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
    makeWindows();
    launch();
    const int status = QCoreApplication::exec();
    onDisplay = nullptr;
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
    using Request = InstanceClaim::Request;
    const auto request = options_.isShowing      ? Request::show
                         : options_.isBackground ? Request::none
                                                 : Request::reopen;
    const auto problem = claim_.askOther(request, qEnvironmentVariable(activationToken));
    if (!problem.isEmpty()) {
        std::fprintf(stderr, "fadewell: %s\n", qUtf8Printable(problem));
        return failed;
    }
    return options_.isShowing ? succeeded : sayThatItRuns();
}

bool Program::compose()
{
    const auto clock = std::make_shared<SystemClock>();
    const QueueFactory makeQueue = [clock](const std::string& label) {
        return std::make_shared<ThreadQueue>(label, clock);
    };
    mainQueue_ = std::make_shared<QtMainQueue>(clock);
    std::string error;
    auto platform = makePlatform(mainQueue_, makeQueue, heartbeat_, error);
    if (!platform) {
        log_.info("Can't start: {}", error); // For the journal; people read the next line.
        std::fprintf(stderr, "fadewell: can't start: %s\n", error.c_str());
        return false;
    }
    composition_ =
        std::make_unique<Composition>(std::move(*platform), mainQueue_, clock, makeQueue);
    makeDiagnostics(makeQueue);
    return true;
}

void Program::makeDiagnostics(const QueueFactory& makeQueue)
{
    const auto& platform = composition_->platform();
    diagnostics_ = Diagnostics::create({.model = composition_->model(),
                                        .mainQueue = mainQueue_,
                                        .workspace = platform.workspace,
                                        .tappability = platform.tappability,
                                        .defaults = platform.defaults,
                                        .inspection = platform.inspection,
                                        .version = FADEWELL_VERSION,
                                        .makeQueue = makeQueue});
}

std::optional<int> Program::goOnBus()
{
    if (!bus_.isConnected()) {
        return std::nullopt;
    }
    service_ = std::make_unique<MixerService>(bus_, serviceParts());
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

MixerService::Parts Program::serviceParts()
{
    MixerService::Parts parts;
    parts.model = composition_->model();
    parts.mainQueue = mainQueue_;
    parts.workspace = composition_->platform().workspace;
    parts.tappability = composition_->platform().tappability;
    parts.loginItem = composition_->loginItem();
    parts.isCapturePermitted = [hardware = composition_->platform().hardware] {
        return AudioPermission::check(*hardware);
    };
    parts.version = FADEWELL_VERSION;
    parts.diagnostics = [this](bool withNames, auto done) {
        diagnostics_->gather(withNames, std::move(done));
    };
    parts.quit = [] {
        QCoreApplication::quit();
    };
    parts.reopened = [this] {
        log_.notice("Started again while running");
        composition_->reopen();
    };
    if (windowsFactory_) {
        parts.show = [this](AppWindow window, const QString& token) {
            showWindow(window, token);
        };
    }
    return parts;
}

void Program::makeWindows()
{
    if (!windowsFactory_) {
        return;
    }
    const auto& platform = composition_->platform();
    WindowsParts parts;
    parts.model = composition_->model();
    parts.mainQueue = mainQueue_;
    parts.workspace = platform.workspace;
    parts.tappability = platform.tappability;
    parts.defaults = platform.defaults;
    parts.loginItem = composition_->loginItem();
    parts.audioAccess = composition_->audioAccess();
    parts.soundServer = platform.soundServer;
    parts.shortcuts = composition_->shortcuts();
    parts.diagnostics = [this](bool withNames, auto done) {
        diagnostics_->gather(withNames, std::move(done));
    };
    parts.quit = [] {
        QCoreApplication::quit();
    };
    windows_ = windowsFactory_(parts);
    composition_->setWindows(windows_);
}

void Program::showWindow(AppWindow window, const QString& token)
{
    if (!token.isEmpty()) {
        qputenv(activationToken, token.toUtf8());
    }
    windows_->show(window);
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
    if (windows_) {
        onDisplay = composition_.get();
        std::atexit(leaveDisplay);
    }
    if (!windows_ && !options_.isHeadless) {
        log_.notice("No display: runs without windows; fadewellctl drives it");
    }
    log_.notice("Running");
}

} // namespace fadewell
