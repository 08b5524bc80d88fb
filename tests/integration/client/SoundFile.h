#pragma once

#include <cstddef>
#include <vector>

namespace fadewell::integration {

/// The samples of one of the tests' own WAV files (stereo, 32-bit float, 48 kHz).
class SoundFile {
public:
    /// Throws std::runtime_error when it can't be read.
    explicit SoundFile(const char* path);

    [[nodiscard]] std::size_t frames() const { return samples_.size() / 2; }
    /// Copies `count` frames from frame `at` on, which is moved along; after the end comes the
    /// beginning again, or silence.
    void copy(float* to, std::size_t count, std::size_t& at, bool isLoop) const noexcept;

private:
    std::vector<float> samples_;
};

} // namespace fadewell::integration
