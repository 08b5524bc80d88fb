#include "tests/integration/support/CountedSound.h"

#include "tests/integration/support/Player.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace fadewell::integration {
namespace {

constexpr float level = 0.5F;
constexpr double tolerance = 0.1;

} // namespace

CountedSound::CountedSound(std::size_t frames)
    : frames_(frames)
    , unit_(std::ldexp(1.0F, frames <= 24'000 ? -15 : -22))
{}

void CountedSound::write(const std::filesystem::path& file) const
{
    std::vector<Frame> content(frames_);
    for (std::size_t i = 0; i < frames_; ++i) {
        content[i] = {sampleOf(i), level};
    }
    writeFrames(file, content);
}

float CountedSound::sampleOf(std::size_t number) const
{
    return static_cast<float>(number + 1) * unit_;
}

std::optional<std::size_t> CountedSound::numberAt(const Sound& sound, std::size_t index) const
{
    const double right = sound.right[index];
    const double number = std::round(sound.left[index] / right * level / unit_) - 1;
    if (right == 0 || number < 0 || number >= static_cast<double>(frames_)) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(number);
}

CountedCheck CountedSound::check(const Sound& sound, double gain) const
{
    CountedCheck check;
    check.isMeasured = sound.isComplete;
    std::size_t next = 0;
    std::size_t silence = 0;
    for (std::size_t i = firstSound(sound); i < sound.frames(); ++i) {
        const auto number = numberAt(sound, i);
        if (!number) {
            ++silence;
            continue;
        }
        const std::size_t jump = (*number + frames_ - next) % frames_;
        if (!check.isHeard) {
            check.isHeard = true;
            check.first = i;
            check.head = *number;
        } else {
            check.inside += std::min(jump, frames_ - jump);
            check.zeros += silence;
            check.longest = std::max(check.longest, silence);
        }
        ++check.heard;
        check.changed += sound.left[i] == sampleOf(*number) && sound.right[i] == level ? 0 : 1;
        const double heard = sound.right[i] / level;
        if (std::abs(heard - gain) > tolerance * gain && check.wrong++ == 0) {
            check.wrongAt = *number;
            check.wrongGain = heard;
        }
        next = *number + 1;
        silence = 0;
    }
    check.tail = frames_ - next;
    return check;
}

} // namespace fadewell::integration
