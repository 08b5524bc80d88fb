#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace fadewell {

/// In rising order of importance; `notice` is for notable events that are no failure.
enum class LogLevel {
    debug,
    info,
    notice,
    error
};

struct LogMessage {
    LogLevel level = LogLevel::debug;
    std::string subsystem;
    std::string category;
    std::string text;
    std::vector<std::string> names{}; ///< of other programs, as they stand in `text`
};

/// Where log messages go. [any thread]
class LogSink {
public:
    virtual ~LogSink() = default;
    [[nodiscard]] virtual bool accepts(LogLevel level) const = 0;
    virtual void write(const LogMessage& message) = 0;

    /// Replaces the program's sink; none drops every message, which is how a program starts.
    static void install(std::shared_ptr<LogSink> sink);
    [[nodiscard]] static std::shared_ptr<LogSink> installed();
};

} // namespace fadewell
