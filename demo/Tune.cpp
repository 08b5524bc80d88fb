#include "demo/Tune.h"

#include <cmath>
#include <numbers>

namespace fadewell::demo {
namespace {

constexpr std::array pentatonic{0, 2, 4, 7, 9, 12};
constexpr double loudest = 0.25;
constexpr double decayPerFrame = 0.99992; // a note fades to a hundredth within 1.2 s

std::uint32_t seedOf(std::string_view name)
{
    std::uint32_t seed = 2166136261;
    for (const char c : name) {
        seed = (seed ^ static_cast<unsigned char>(c)) * 16777619;
    }
    return seed;
}

} // namespace

Tune::Tune(std::string_view name)
    : random_(seedOf(name))
    , octave_(110.0 * (1U << (random_ >> 8) % 3))
    , framesPerNote_(sampleRate * (0.22 + 0.04 * ((random_ >> 4) % 8)))
{}

std::array<float, 2> Tune::next()
{
    if (framesLeft_ <= 0) {
        startNote();
    }
    framesLeft_ -= 1;
    phase_ = std::fmod(phase_ + phaseStep_, 2 * std::numbers::pi);
    // The attack of 5 ms keeps a note from clicking; the overtone makes it a pluck rather than a
    // beep.
    const double attack = std::min(1.0, (framesPerNote_ - framesLeft_) / (0.005 * sampleRate));
    const double sample = loudness_ * attack * (std::sin(phase_) + 0.2 * std::sin(2 * phase_));
    loudness_ *= decayPerFrame;
    return {static_cast<float>(sample * (1 - pan_)), static_cast<float>(sample * pan_)};
}

void Tune::startNote()
{
    random_ = random_ * 1664525 + 1013904223;
    const auto degree = pentatonic[(random_ >> 16) % pentatonic.size()];
    framesLeft_ += framesPerNote_;
    phase_ = 0;
    phaseStep_ = 2 * std::numbers::pi * octave_ * std::exp2(degree / 12.0) / sampleRate;
    loudness_ = loudest;
    pan_ = 0.3 + 0.4 * ((random_ >> 24) % 16) / 15.0;
}

} // namespace fadewell::demo
