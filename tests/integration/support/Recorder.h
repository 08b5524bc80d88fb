#pragma once

#include "tests/integration/support/Sound.h"

#include <chrono>
#include <memory>
#include <string>

namespace fadewell::integration {

/// Records what an output plays, every cycle of it, from construction on. The output runs as long
/// as it is recorded, so its time never stands still.
class Recorder {
public:
    /// Of a player, what it gives itself.
    enum class Source {
        output,
        player
    };

    /// `node` is a node name. Throws std::runtime_error when it can't be recorded.
    explicit Recorder(const std::string& node, Source source = Source::output);
    ~Recorder();

    /// Frames recorded so far: a moment to read from.
    [[nodiscard]] std::size_t now() const;
    /// How often so far a cycle was missing, which is when not all was done in time.
    [[nodiscard]] std::size_t gaps() const;
    /// Waits until `count` frames from `first` on are there. Throws std::runtime_error when the
    /// output stops, or when the recording is full (two minutes).
    [[nodiscard]] Sound read(std::size_t first, std::size_t count) const;
    /// Everything from `first` until now.
    [[nodiscard]] Sound readUntilNow(std::size_t first) const;
    /// Waits until the tone's gain stays within 0.02 dB of `gain` (in dB) for 100 ms.
    [[nodiscard]] bool
    awaitGain(double gain, std::chrono::milliseconds deadline = std::chrono::seconds(15)) const;
    /// Waits for 100 ms of digital silence.
    [[nodiscard]] bool
    awaitSilence(std::chrono::milliseconds deadline = std::chrono::seconds(15)) const;

private:
    class Capture;
    [[nodiscard]] Sound latest() const;

    std::unique_ptr<Capture> capture_;
};

/// Frames in a time.
[[nodiscard]] inline std::size_t frames(std::chrono::milliseconds time)
{
    return static_cast<std::size_t>(sampleRate * static_cast<double>(time.count()) / 1000);
}

} // namespace fadewell::integration
