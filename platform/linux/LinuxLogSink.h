#pragma once

#include "base/LogSink.h"

#include <memory>
#include <string>

namespace fadewell {

/// The systemd journal where it listens, standard error otherwise. The threshold is `info` in the
/// journal and `notice` on standard error; verbose lets `debug` through on both. [any thread]
class LinuxLogSink final : public LogSink {
public:
    enum class Destination {
        journal,
        standardError
    };

    LinuxLogSink(Destination destination, bool isVerbose)
        : destination_(destination)
        , threshold_(isVerbose                             ? LogLevel::debug
                     : destination == Destination::journal ? LogLevel::info
                                                           : LogLevel::notice)
    {}

    /// The journal when standard error is connected to it, or when a journal runs and standard
    /// error is no terminal that somebody watches.
    [[nodiscard]] static Destination preferredDestination();

    [[nodiscard]] bool accepts(LogLevel level) const override { return level >= threshold_; }
    void write(const LogMessage& message) override;

    /// The line on standard error, without its end.
    [[nodiscard]] static std::string line(const LogMessage& message);
    /// The level as a syslog priority: debug 7, info 6, notice 5, error 3.
    [[nodiscard]] static int priority(LogLevel level);

private:
    Destination destination_;
    LogLevel threshold_;
};

} // namespace fadewell
