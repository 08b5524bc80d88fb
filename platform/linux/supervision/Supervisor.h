#pragma once

#include "base/Logger.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/supervision/HangJudge.h"
#include "platform/linux/supervision/Heartbeat.h"
#include "platform/linux/supervision/RestartBudget.h"

#include <csignal>
#include <functional>
#include <memory>
#include <string>
#include <sys/types.h>

namespace fadewell {

/// Runs a program in a process of its own, ends it when it hangs while its streams run, and starts
/// it again when that or a crash has ended it, as often as RestartBudget allows.
///
/// This process only waits: it wakes for signals, and at HangJudge's ticks while the program has
/// running streams. SIGTERM, SIGINT and SIGHUP are passed on to the program, and its exit status
/// comes back; when this process is killed, the program gets a SIGTERM. A program that is being
/// debugged is never ended. Ctrl-Z stops neither of the two: that would silence every app.
class Supervisor final {
public:
    /// Runs in the child process, with SIGTERM, SIGINT and SIGHUP still blocked; the exit status.
    using Program = std::function<int(const std::shared_ptr<Heartbeat>& heartbeat)>;

    /// The exit status when the program has failed too often.
    static constexpr int failedRepeatedly = 3;

    /// Once in a process, before any other thread starts. Throws std::system_error when the system
    /// has no descriptors left. [main thread]
    Supervisor();

    /// Returns in each process: in a child with what it returned, here with the exit status of the
    /// last run. When the program has failed too often, `giveBack` is run once, in a process of its
    /// own; it has to end by itself. [main thread]
    [[nodiscard]] int run(const Program& program, const std::function<int()>& giveBack);

private:
    /// How a run has ended.
    struct Ending {
        std::string failure; ///< what happened, unless it was meant to end
        int status = 0;
    };

    [[nodiscard]] pid_t start();
    void becomeProgram(pid_t supervisor);
    [[nodiscard]] Ending watch();
    [[nodiscard]] siginfo_t nextChange() const;
    void judge();
    void passSignalsOn();
    [[nodiscard]] bool isDebugged() const;
    [[nodiscard]] Ending endingOf(const siginfo_t& info) const;

    Logger log_{"supervisor"};
    std::shared_ptr<Heartbeat> heartbeat_;
    FileDescriptor signals_;
    sigset_t maskBefore_ = {};
    HangJudge judge_;
    HangJudge::Verdict verdict_ = HangJudge::Verdict::idle;
    RestartBudget budget_;
    pid_t child_ = -1;
    bool isStopped_ = false;
    bool isKilled_ = false; ///< by us, because it hung
    bool isEnding_ = false; ///< we were asked to end
};

} // namespace fadewell
