#pragma once

#include <cstddef>
#include <vector>

namespace fadewell::integration {

inline constexpr double sampleRate = 48'000;
inline constexpr double toneFrequency = 100;
inline constexpr double toneAmplitude = 0.5;

/// Two channels as they were heard at an output.
struct Sound {
    std::vector<float> left;
    std::vector<float> right;
    bool isComplete = true; ///< no cycle between the first and the last frame is missing

    [[nodiscard]] std::size_t frames() const { return left.size(); }
    [[nodiscard]] Sound part(std::size_t first, std::size_t count) const;
    /// Every sample of both channels is exactly 0.
    [[nodiscard]] bool isDigitalSilence() const;
};

/// The amplitude of a sine in a channel, whatever its phase; over whole periods of 100 Hz, of which
/// `frequency` is a multiple.
[[nodiscard]] double amplitudeOfTone(const std::vector<float>& channel,
                                     double frequency = toneFrequency);

/// How far the tone lies above (or, negative, below) the untouched tone, in dB, in the channel that
/// is farther off; minus infinity in silence.
[[nodiscard]] double toneGain(const Sound& sound);

/// The gain of a factor in dB.
[[nodiscard]] double decibels(double factor);

/// The largest difference of neighbouring samples over both channels, as a multiple of the
/// untouched tone's own largest.
[[nodiscard]] double largestStep(const Sound& sound);

/// What was heard between holes: runs of at least `shortest` exactly silent frames. Silence before
/// the first and after the last sound is none.
[[nodiscard]] std::vector<Sound> partsBetweenHoles(const Sound& sound, std::size_t shortest);

/// The first frame from `from` on that is not exactly 0 in both channels; frames() without one.
[[nodiscard]] std::size_t firstSound(const Sound& sound, std::size_t from = 0);

} // namespace fadewell::integration
