#pragma once

#include "base/LogSink.h"

#include <fmt/format.h>
#include <string>
#include <string_view>
#include <utility>

namespace fadewell {

/// Writes a component's messages to the installed sink; formats only what the sink accepts.
/// Holds nothing but names, so it is cheap to copy. [any thread, never the audio thread]
class Logger final {
public:
    explicit Logger(std::string category, std::string subsystem = "app.fadewell.mac")
        : subsystem_(std::move(subsystem))
        , category_(std::move(category))
    {}

    template <class... Args>
    void debug(fmt::format_string<Args...> format, Args&&... args) const
    {
        log(LogLevel::debug, format, fmt::make_format_args(args...));
    }
    template <class... Args>
    void info(fmt::format_string<Args...> format, Args&&... args) const
    {
        log(LogLevel::info, format, fmt::make_format_args(args...));
    }
    /// The default level.
    template <class... Args>
    void notice(fmt::format_string<Args...> format, Args&&... args) const
    {
        log(LogLevel::notice, format, fmt::make_format_args(args...));
    }
    template <class... Args>
    void error(fmt::format_string<Args...> format, Args&&... args) const
    {
        log(LogLevel::error, format, fmt::make_format_args(args...));
    }

private:
    void log(LogLevel level, fmt::string_view format, fmt::format_args args) const;

    std::string subsystem_;
    std::string category_;
};

} // namespace fadewell
