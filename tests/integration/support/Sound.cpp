#include "tests/integration/support/Sound.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace fadewell::integration {
namespace {

constexpr double radiansPerFrame = 2 * std::numbers::pi * toneFrequency / sampleRate;
constexpr auto framesInPeriod = static_cast<std::size_t>(sampleRate / toneFrequency);

double largestStepOf(const std::vector<float>& channel)
{
    double largest = 0;
    for (std::size_t i = 1; i < channel.size(); ++i) {
        largest = std::max(largest, std::abs(double{channel[i]} - double{channel[i - 1]}));
    }
    return largest;
}

bool isSilent(const Sound& sound, std::size_t frame)
{
    return sound.left[frame] == 0 && sound.right[frame] == 0;
}

} // namespace

Sound Sound::part(std::size_t first, std::size_t count) const
{
    const auto begin = static_cast<std::ptrdiff_t>(std::min(first, frames()));
    const auto end = static_cast<std::ptrdiff_t>(std::min(first + count, frames()));
    return {{left.begin() + begin, left.begin() + end},
            {right.begin() + begin, right.begin() + end},
            isComplete};
}

bool Sound::isDigitalSilence() const
{
    return firstSound(*this) == frames();
}

double amplitudeOfTone(const std::vector<float>& channel, double frequency)
{
    const double step = radiansPerFrame * frequency / toneFrequency;
    const std::size_t count = channel.size() / framesInPeriod * framesInPeriod;
    double sine = 0;
    double cosine = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const double phase = step * static_cast<double>(i);
        sine += double{channel[i]} * std::sin(phase);
        cosine += double{channel[i]} * std::cos(phase);
    }
    return count == 0 ? 0 : 2 * std::hypot(sine, cosine) / static_cast<double>(count);
}

double decibels(double factor)
{
    return 20 * std::log10(factor);
}

double toneGain(const Sound& sound)
{
    const double left = decibels(amplitudeOfTone(sound.left) / toneAmplitude);
    const double right = decibels(amplitudeOfTone(sound.right) / toneAmplitude);
    return std::abs(left) > std::abs(right) ? left : right;
}

double largestStep(const Sound& sound)
{
    return std::max(largestStepOf(sound.left), largestStepOf(sound.right)) /
           (toneAmplitude * radiansPerFrame);
}

std::vector<Sound> partsBetweenHoles(const Sound& sound, std::size_t shortest)
{
    std::vector<Sound> parts;
    std::size_t begin = firstSound(sound);
    for (std::size_t frame = begin; frame < sound.frames();) {
        const std::size_t next = isSilent(sound, frame) ? firstSound(sound, frame) : frame + 1;
        const bool isLast = next == sound.frames();
        if (isLast || next - frame >= shortest) {
            const std::size_t end = isSilent(sound, frame) ? frame : next;
            parts.push_back(sound.part(begin, end - begin));
            begin = next;
        }
        frame = next;
    }
    return parts;
}

std::size_t firstSound(const Sound& sound, std::size_t from)
{
    while (from < sound.frames() && isSilent(sound, from)) {
        ++from;
    }
    return from;
}

} // namespace fadewell::integration
