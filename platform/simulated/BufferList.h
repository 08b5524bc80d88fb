#pragma once

#include "audio/AudioTypes.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace fadewell {

/// An AudioBufferList that owns its samples. Any shape, also such as a platform should not send.
class BufferList final {
public:
    BufferList();

    /// `channels` interleaved in one buffer, each sample at `value`.
    BufferList& add(std::uint32_t channels, std::uint32_t frames, float value = 0);
    /// A buffer of so many bytes, whether or not whole frames fit.
    BufferList& addBytes(std::uint32_t channels, std::uint32_t bytes, float value = 0);
    /// A buffer that claims bytes but has no data.
    BufferList& addNull(std::uint32_t channels, std::uint32_t bytes);

    [[nodiscard]] AudioBufferList* list();
    [[nodiscard]] std::size_t count() const { return samples_.size(); }
    [[nodiscard]] std::span<float> samples(std::size_t buffer) { return samples_.at(buffer); }

private:
    void append(AudioBuffer buffer);

    std::vector<std::vector<float>> samples_;
    std::vector<std::byte> list_;
};

} // namespace fadewell
