#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace fadewell::integration {

/// A program started by a test, which dies with the test. What it writes goes into files.
class ChildProcess {
public:
    /// Finds the program on the PATH. Throws std::runtime_error when there is no such program.
    /// Its standard input is empty at once, or with `hasInput` at endInput() or its end.
    explicit ChildProcess(std::vector<std::string> command, bool hasInput = false);
    /// Kills and collects it.
    ~ChildProcess();
    ChildProcess(ChildProcess&& other) noexcept;
    ChildProcess& operator=(ChildProcess&&) = delete;

    [[nodiscard]] pid_t pid() const { return pid_; }
    [[nodiscard]] bool isRunning();
    void signal(int number) const;
    void endInput();
    /// The exit code, or minus the number of the signal that ended it; empty when it still runs at
    /// the deadline.
    [[nodiscard]] std::optional<int>
    wait(std::chrono::milliseconds deadline = std::chrono::seconds(15));

    /// What it has written to standard output and standard error so far.
    [[nodiscard]] std::string output() const;
    [[nodiscard]] std::string errors() const;

private:
    pid_t pid_ = -1;
    std::optional<int> result_;
    int input_ = -1;
    int output_ = -1; // files without a name
    int errors_ = -1;
};

/// What a finished program left.
struct CommandResult {
    int code = 0;
    std::string output;
    std::string errors;
};

/// Runs a program to its end. Throws std::runtime_error when it doesn't end in time.
[[nodiscard]] CommandResult runCommand(std::vector<std::string> command);

/// Runs one of the sound server's own tools, which now and then never end: then it is run again.
[[nodiscard]] CommandResult runTool(const std::vector<std::string>& command);

} // namespace fadewell::integration
