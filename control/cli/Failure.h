#pragma once

#include <stdexcept>
#include <string>

namespace fadewell::cli {

/// What the command line ends with.
enum class ExitCode {
    success = 0,
    failure = 1,
    usage = 2,
    notRunning = 3,
    unknownApp = 4,
    ambiguous = 5,
};

/// Ends a command with a message for the person who typed it.
class Failure final : public std::runtime_error {
public:
    Failure(ExitCode code, const std::string& message)
        : std::runtime_error(message)
        , code_(code)
    {}

    [[nodiscard]] ExitCode code() const { return code_; }

private:
    ExitCode code_;
};

} // namespace fadewell::cli
