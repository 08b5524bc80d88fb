#pragma once

#include <cstdint>
#include <span>

namespace fadewell::demo {

/// Generated sound that can be told apart by ear and never ends. [one thread]
class DemoSound {
public:
    enum class Tune {
        music,
        radio,
        podcast
    };

    static constexpr std::uint32_t rate = 48'000; ///< Hz
    static constexpr std::uint32_t channels = 2;

    explicit DemoSound(Tune tune)
        : tune_(tune)
    {}

    /// Fills interleaved stereo, peaks below 0.5. Allocates nothing.
    void render(std::span<float> samples);

private:
    float sample(double time);

    Tune tune_;
    std::uint64_t frame_ = 0;
    std::uint32_t noise_ = 1;
    float hiss_ = 0.0F;
};

} // namespace fadewell::demo
