#pragma once

#include "tests/integration/support/Fadewell.h"
#include "tests/integration/support/SoundTest.h"

#include <optional>
#include <string>
#include <vector>

namespace fadewell::integration {

/// Every test has its own Fadewell, which remembers nothing at the start.
class FadewellTest : public SoundTest {
protected:
    void SetUp() override;
    void TearDown() override;

    /// Starts a player on the tone and waits until it is heard at `gain` (in dB) on the default
    /// output and Fadewell lists it. Fails the test otherwise.
    [[nodiscard]] ChildProcess playTone(const std::string& kind, double gain = 0);
    /// The identifier of the app that a process belongs to; empty when there is none.
    [[nodiscard]] static std::string appOf(const ChildProcess& player);
    /// Runs a command of fadewellctl that has to succeed.
    static void command(std::vector<std::string> arguments);
    /// What pactl prints.
    static std::string pactl(std::vector<std::string> arguments);
    /// Whether the server has muted the input.
    [[nodiscard]] static bool isOff(const std::string& input);

    std::optional<Fadewell> fadewell_;
};

/// Half a second holds the tone at `gain` (in dB), within 0.02 dB; a recording with gaps doesn't
/// count.
void expectGain(const Recorder& recorder, double gain);

/// For a failure's message: says when the recording has gaps, so that what it shows is no one's
/// fault.
[[nodiscard]] std::string measuringNote(const Sound& sound);

} // namespace fadewell::integration
