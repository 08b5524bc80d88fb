#pragma once

#include "tests/integration/support/SoundTest.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace fadewell::integration {

/// The program itself, without a window, on the session of the environment.
class Fadewell {
public:
    /// Returns when it answers. Throws std::runtime_error with its log when it doesn't.
    Fadewell();

    /// Ends it with a signal; the exit code as ChildProcess::wait() gives it.
    [[nodiscard]] std::optional<int> end(int signal);
    [[nodiscard]] std::string log() const { return process_.errors(); }

    /// Runs fadewellctl.
    [[nodiscard]] static CommandResult control(std::vector<std::string> arguments);
    [[nodiscard]] static nlohmann::json apps();

private:
    ChildProcess process_;
};

/// Every test has its own Fadewell, which remembers nothing at the start.
class FadewellTest : public SoundTest {
protected:
    void SetUp() override;
    void TearDown() override;

    /// Starts a player on the tone and waits until it is heard at `gain` (in dB) on the default
    /// output and Fadewell lists it. Fails the test otherwise.
    [[nodiscard]] ChildProcess playTone(PlayerKind kind, double gain = 0);
    /// The identifier of the app that a process belongs to; empty when there is none.
    [[nodiscard]] static std::string appOf(const ChildProcess& player);
    /// Runs a command of fadewellctl that has to succeed.
    static void command(std::vector<std::string> arguments);

    std::optional<Fadewell> fadewell_;
};

/// Half a second holds the tone at `gain` (in dB), within 0.02 dB; a recording with gaps doesn't
/// count.
void expectGain(const Recorder& recorder, double gain);

/// For a failure's message: says when the recording has gaps, so that what it shows is no one's
/// fault.
[[nodiscard]] std::string measuringNote(const Sound& sound);

} // namespace fadewell::integration
