#pragma once

#include "tests/integration/support/ChildProcess.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace fadewell::integration {

/// The program itself on the session of the environment.
class Fadewell {
public:
    enum class Windows {
        none,
        onDisplay ///< of the environment
    };

    /// Returns when it answers. Throws std::runtime_error with its log when it doesn't. `variable`
    /// is one of its environment, NAME=VALUE.
    explicit Fadewell(const std::string& variable = "LC_ALL=C.UTF-8",
                      Windows windows = Windows::none);

    /// Ends it with a signal, for SIGKILL together with its supervisor, which would start it again;
    /// the exit code as ChildProcess::wait() gives it.
    [[nodiscard]] std::optional<int> end(int signal);
    /// The process that does the work, below the supervisor's; 0 when there is none.
    [[nodiscard]] pid_t pid() const;
    /// The same and the supervisor's.
    [[nodiscard]] std::vector<pid_t> processes() const { return {pid(), process_.pid()}; }
    /// To the supervisor's process.
    void signal(int number) const { process_.signal(number); }
    [[nodiscard]] std::optional<int> wait() { return process_.wait(); }
    [[nodiscard]] bool isRunning() { return process_.isRunning(); }
    [[nodiscard]] std::string log() const { return process_.errors(); }

    /// Runs fadewellctl.
    [[nodiscard]] static CommandResult control(std::vector<std::string> arguments);
    [[nodiscard]] static nlohmann::json apps();
    /// The identifier of the app that a process belongs to; empty when there is none.
    [[nodiscard]] static std::string appOf(pid_t player);

private:
    ChildProcess process_;
};

} // namespace fadewell::integration
