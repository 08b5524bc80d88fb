#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace fadewell {

/// Turns SIGTERM, SIGINT and SIGHUP into calls on the main thread.
///
/// From construction on they no longer kill the process, nor are they blocked; one that comes
/// before `deliver` waits for it. Construct it before any thread starts, once in a program. [main
/// thread]
class TerminationSignals final {
public:
    /// Throws std::system_error when the system has no descriptors left.
    TerminationSignals();
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    /// Calls `terminate` with the signal's number from the event loop.
    void deliver(std::function<void(int signal)> terminate);

private:
    std::unique_ptr<QSocketNotifier> notifier_;
    std::function<void(int)> terminate_;
};

} // namespace fadewell
