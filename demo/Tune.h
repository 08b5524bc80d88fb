#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace fadewell::demo {

/// An endless quiet tune: plucked notes of a scale, one voice, 48 kHz. The same name always plays
/// the same.
class Tune {
public:
    static constexpr double sampleRate = 48'000;

    explicit Tune(std::string_view name);
    /// The next frame, left and right, within -0.3 to 0.3.
    [[nodiscard]] std::array<float, 2> next();

private:
    void startNote();

    std::uint32_t random_;
    double octave_;
    double framesPerNote_;
    double framesLeft_ = 0;
    double phase_ = 0;
    double phaseStep_ = 0;
    double loudness_ = 0;
    double pan_ = 0.5;
};

} // namespace fadewell::demo
