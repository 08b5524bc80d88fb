#pragma once

#include <pipewire/pipewire.h>

#include <atomic>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace fadewell::demo {

/// Measures what really sounds on one output, at its monitor. [the loop's thread; `measure` on
/// PipeWire's data thread]
class LevelMeter {
public:
    struct Level {
        double rms = 0.0;  ///< linear, full scale is 1
        double peak = 0.0; ///< linear
        bool operator==(const Level&) const = default;
    };

    /// @param outputName the output's node.name
    LevelMeter(pw_core* core, const std::string& outputName);
    ~LevelMeter();
    LevelMeter(const LevelMeter&) = delete;
    LevelMeter& operator=(const LevelMeter&) = delete;

    /// Since the last call; absent when the output didn't run or can't be measured.
    std::optional<Level> take();

private:
    static void onProcess(void* data);
    void connect();
    void measure(std::span<const float> samples);

    pw_stream* stream_ = nullptr;
    spa_hook listener_{};
    std::atomic<double> squares_ = 0.0;
    std::atomic<float> peak_ = 0.0F;
    std::atomic<std::uint64_t> samples_ = 0;
};

} // namespace fadewell::demo
