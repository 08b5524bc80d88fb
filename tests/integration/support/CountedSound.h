#pragma once

#include "tests/integration/support/Sound.h"

#include <filesystem>
#include <optional>

namespace fadewell::integration {

/// What a recording holds of one playing of a counted sound. All in frames.
struct CountedCheck {
    bool isHeard = false;
    bool isMeasured = true; ///< false: the recording itself has gaps, so nothing follows from it
    std::size_t first = 0;  ///< where in the recording it begins
    std::size_t heard = 0;
    std::size_t changed = 0; ///< heard otherwise than written, in any bit
    std::size_t wrong = 0;   ///< heard at another gain than the chosen one
    std::size_t wrongAt = 0; ///< the number of the first such frame
    double wrongGain = 0;    ///< how it was heard instead, as a factor
    std::size_t head = 0;    ///< missing at its beginning
    std::size_t inside = 0;  ///< missing or repeated in the middle
    std::size_t tail = 0;    ///< missing at its end
    std::size_t zeros = 0;   ///< silence put in between
    std::size_t longest = 0; ///< the longest run of that silence

    /// What was heard is untouched, and all of it from its beginning on.
    [[nodiscard]] bool isExact() const { return changed + inside + zeros == 0; }
};

/// A sound of which every frame says its own number, at whatever gain it is heard: the left channel
/// divided by the right one, which is constant.
class CountedSound {
public:
    /// At most a minute. Up to half a second survives players that convert to 16 bits.
    explicit CountedSound(std::size_t frames);

    [[nodiscard]] std::size_t frames() const { return frames_; }
    void write(const std::filesystem::path& file) const;

    /// The number of the frame at an index of a recording; empty where that is silent.
    [[nodiscard]] std::optional<std::size_t> numberAt(const Sound& sound, std::size_t index) const;
    /// `gain` is a factor, and 10 % off it are wrong. A sound that is played in a loop goes on with
    /// its first frame.
    [[nodiscard]] CountedCheck check(const Sound& sound, double gain) const;

private:
    [[nodiscard]] float sampleOf(std::size_t number) const;

    std::size_t frames_;
    float unit_;
};

} // namespace fadewell::integration
