#include "demo/DemoSound.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace fadewell::demo {
namespace {

double sine(double hertz, double time)
{
    return std::sin(2.0 * std::numbers::pi * hertz * time);
}

// Plucked notes, three a second.
double music(double time)
{
    static constexpr std::array notes{220.0, 261.6, 329.6, 440.0, 392.0, 329.6, 293.7, 246.9};
    const double beat = time * 3.0;
    const auto index = static_cast<std::size_t>(beat);
    const double since = (beat - static_cast<double>(index)) / 3.0;
    const double hertz = notes.at(index % notes.size());
    const double attack = std::min(1.0, since * 200.0);
    return 0.4 * attack * std::exp(-6.0 * since) *
           (sine(hertz, time) + 0.2 * sine(2 * hertz, time));
}

// A swelling fifth; the hiss is added by the caller.
double radio(double time)
{
    const double swell = 0.6 + 0.4 * sine(0.25, time);
    return 0.12 * swell * (sine(146.8, time) + sine(220.0, time));
}

// A voice's pitch in syllables, with a breath after every sentence.
double podcast(double time)
{
    const double inSentence = std::fmod(time, 4.0);
    if (inSentence > 3.2) {
        return 0.0;
    }
    const double syllable = std::pow(std::abs(sine(2.0, time)), 1.5);
    double voice = 0.0;
    for (int harmonic = 1; harmonic <= 6; ++harmonic) {
        voice += sine(125.0 * harmonic, time) / harmonic;
    }
    return 0.15 * syllable * std::min(1.0, 20.0 * (3.2 - inSentence)) * voice;
}

} // namespace

void DemoSound::render(std::span<float> samples)
{
    // Every tune repeats after 16 s, so that the time stays exact for ever.
    constexpr std::uint64_t loop = 16ULL * rate;
    for (std::size_t i = 0; i + channels <= samples.size(); i += channels) {
        const float value = sample(static_cast<double>(frame_) / rate);
        samples[i] = value;
        samples[i + 1] = value;
        frame_ = (frame_ + 1) % loop;
    }
}

float DemoSound::sample(double time)
{
    switch (tune_) {
    case Tune::music:
        return static_cast<float>(music(time));
    case Tune::podcast:
        return static_cast<float>(podcast(time));
    case Tune::radio:
        break;
    }
    noise_ = noise_ * 1'664'525U + 1'013'904'223U;
    const float white = static_cast<float>(noise_ >> 8U) / 8'388'608.0F - 1.0F;
    hiss_ += 0.1F * (white - hiss_);
    return static_cast<float>(radio(time)) + 0.05F * hiss_;
}

} // namespace fadewell::demo
