#pragma once

#include <memory>
#include <optional>
#include <string>

struct pw_core;

namespace fadewell::demo {

/// Measures what an output really plays, from its monitor. Lives on its core's loop.
class LevelMeter {
public:
    /// `output` is a node name.
    LevelMeter(pw_core* core, const std::string& output);
    ~LevelMeter();

    struct Level {
        double rms = 0;  ///< dBFS; a full-scale sine is -3
        double peak = 0; ///< dBFS
    };
    /// Since the last call; empty for digital silence, and while the output sleeps.
    [[nodiscard]] std::optional<Level> take();

private:
    class Stream;
    std::unique_ptr<Stream> stream_;
};

} // namespace fadewell::demo
