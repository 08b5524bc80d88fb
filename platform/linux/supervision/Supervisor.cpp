#include "platform/linux/supervision/Supervisor.h"

#include "base/SystemClock.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fmt/format.h>
#include <fstream>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace fadewell {
namespace {

constexpr int couldNotStart = 1;
constexpr int endedBySignal = 128; // Plus its number, as shells have it.
constexpr std::array<int, 3> passedOn{SIGTERM, SIGINT, SIGHUP};

// Not a part of the program's own name: who ends or stops that by name doesn't mean this process.
constexpr const char* processName = "mixer-guard";

sigset_t signalSet(bool withChild)
{
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : passedOn) {
        sigaddset(&set, signal);
    }
    if (withChild) {
        sigaddset(&set, SIGCHLD);
    }
    return set;
}

/// A signal that our parent ignored would never be seen.
void resetSignals()
{
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    for (const int signal : passedOn) {
        sigaction(signal, &action, nullptr);
    }
    sigaction(SIGCHLD, &action, nullptr);
    // An empty handler and not SIG_IGN, which programs that we start would inherit.
    action.sa_handler = [](int) {
    };
    action.sa_flags = SA_RESTART;
    sigaction(SIGTSTP, &action, nullptr);
}

} // namespace

Supervisor::Supervisor()
    : heartbeat_(std::make_shared<Heartbeat>())
{
    const sigset_t handled = signalSet(true);
    signals_ = FileDescriptor(signalfd(-1, &handled, SFD_CLOEXEC | SFD_NONBLOCK));
    if (!signals_) {
        throw std::system_error(errno, std::generic_category(), "signalfd");
    }
    sigprocmask(SIG_BLOCK, &handled, &maskBefore_);
    resetSignals();
}

int Supervisor::run(const Program& program, const std::function<int()>& giveBack)
{
    for (bool isOver = false;;) {
        const double started = SystemClock().uptime();
        child_ = start();
        if (child_ < 0) {
            log_.error("Fadewell can't be started: {}", std::strerror(errno));
            return couldNotStart;
        }
        if (child_ == 0) {
            return isOver ? giveBack() : program(heartbeat_);
        }
        const Ending ending = watch();
        if (isOver) {
            return failedRepeatedly;
        }
        if (ending.failure.empty()) {
            return ending.status;
        }
        if (!budget_.allows(started, SystemClock().uptime())) {
            log_.error("Fadewell {} again: it stays ended, apps play as without it",
                       ending.failure);
            isOver = true;
            continue;
        }
        log_.error("Fadewell {}: it is started again", ending.failure);
    }
}

pid_t Supervisor::start()
{
    heartbeat_->reset();
    judge_ = {};
    verdict_ = HangJudge::Verdict::idle;
    isKilled_ = isStopped_ = false;
    const pid_t supervisor = getpid();
    const pid_t child = fork();
    if (child == 0) {
        becomeProgram(supervisor);
    } else if (child > 0) {
        prctl(PR_SET_NAME, processName);
    }
    return child;
}

void Supervisor::becomeProgram(pid_t supervisor)
{
    prctl(PR_SET_NAME, program_invocation_short_name);
    signals_ = {};
    sigprocmask(SIG_SETMASK, &maskBefore_, nullptr);
    const sigset_t ours = signalSet(false);
    sigprocmask(SIG_BLOCK, &ours, nullptr);
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != supervisor) {
        raise(SIGTERM); // It died before it could be noticed.
    }
}

Supervisor::Ending Supervisor::watch()
{
    for (;;) {
        std::array<pollfd, 2> events{
            {{signals_.get(), POLLIN, 0}, {heartbeat_->wakeUps(), POLLIN, 0}}};
        const bool isIdle = verdict_ == HangJudge::Verdict::idle;
        const int ready = poll(events.data(), events.size(), isIdle ? -1 : HangJudge::tickLength);
        passSignalsOn();
        bool isNews = events[1].revents != 0;
        for (siginfo_t change = nextChange(); change.si_pid == child_; change = nextChange()) {
            if (change.si_code != CLD_STOPPED && change.si_code != CLD_CONTINUED) {
                return endingOf(change);
            }
            isStopped_ = change.si_code == CLD_STOPPED;
            isNews = true;
        }
        if (ready == 0 || isNews) {
            judge();
        }
    }
}

siginfo_t Supervisor::nextChange() const
{
    siginfo_t change = {};
    const int failed = waitid(
        P_PID, static_cast<id_t>(child_), &change, WEXITED | WSTOPPED | WCONTINUED | WNOHANG);
    return failed ? siginfo_t{} : change;
}

void Supervisor::judge()
{
    Heartbeat::Reading reading = heartbeat_->read();
    // An app that resumes would be silent, and what is stopped wouldn't tell of it.
    reading.isWatched |= isStopped_;
    verdict_ = judge_.tick(reading);
    if (verdict_ == HangJudge::Verdict::quiet) {
        heartbeat_->ask();
    } else if (verdict_ == HangJudge::Verdict::hung && !isKilled_ && !isDebugged()) {
        kill(child_, SIGKILL); // It would not hear anything else.
        isKilled_ = true;
    }
}

void Supervisor::passSignalsOn()
{
    signalfd_siginfo info = {};
    while (::read(signals_.get(), &info, sizeof info) == sizeof info) {
        const int signal = static_cast<int>(info.ssi_signo);
        if (signal == SIGCHLD) {
            continue;
        }
        isEnding_ = true;
        if (info.ssi_code != SI_KERNEL) { // A terminal's reach both of us.
            kill(child_, signal);
        }
    }
}

bool Supervisor::isDebugged() const
{
    std::ifstream status(fmt::format("/proc/{}/status", child_));
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("TracerPid:")) {
            return line != "TracerPid:\t0";
        }
    }
    return false;
}

Supervisor::Ending Supervisor::endingOf(const siginfo_t& info) const
{
    if (info.si_code == CLD_EXITED) {
        return {"", info.si_status};
    }
    const int status = endedBySignal + info.si_status;
    if (isEnding_) {
        return {"", status};
    }
    return isKilled_ ? Ending{"hung", status}
                     : Ending{fmt::format("crashed ({})", strsignal(info.si_status)), status};
}

} // namespace fadewell
