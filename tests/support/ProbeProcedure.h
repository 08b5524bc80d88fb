#pragma once

#include "audio/AudioTypes.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <span>

namespace fadewell {

/// An I/O procedure that judges what it is given and plays silence. Read from any thread.
class ProbeProcedure final {
public:
    [[nodiscard]] std::uint64_t calls() const { return calls_; }
    /// Whether any input sample was not 0.
    [[nodiscard]] bool hasHeard() const { return hasHeard_; }
    /// False once a list was missing, a buffer had bytes but no data, or more frames than any sound
    /// system asks for.
    [[nodiscard]] bool isContent() const { return isContent_; }

    /// To register with a ProbeProcedure as its client.
    static OSStatus call(AudioObjectID /*device*/,
                         const AudioTimeStamp* /*now*/,
                         const AudioBufferList* input,
                         const AudioTimeStamp* /*inputTime*/,
                         AudioBufferList* output,
                         const AudioTimeStamp* /*outputTime*/,
                         void* client) noexcept
    {
        auto& probe = *static_cast<ProbeProcedure*>(client);
        ++probe.calls_;
        probe.visit(input, [&](std::span<float> samples) {
            const auto isSound = [](float sample) {
                return sample != 0;
            };
            probe.hasHeard_ = probe.hasHeard_ || std::ranges::any_of(samples, isSound);
        });
        probe.visit(output, [](std::span<float> samples) { std::ranges::fill(samples, 0.0F); });
        return 0;
    }

private:
    template <class Visitor>
    void visit(const AudioBufferList* list, Visitor visitor)
    {
        isContent_ = isContent_ && list;
        for (std::uint32_t i = 0; list && i < list->mNumberBuffers; ++i) {
            const auto& buffer = list->mBuffers[i];
            const std::size_t count = buffer.mDataByteSize / sizeof(float);
            isContent_ = isContent_ && (count == 0 || buffer.mData) &&
                         count <= std::size_t{65536} * buffer.mNumberChannels;
            visitor({static_cast<float*>(buffer.mData), buffer.mData ? count : 0});
        }
    }

    std::atomic<std::uint64_t> calls_ = 0;
    std::atomic<bool> hasHeard_ = false;
    std::atomic<bool> isContent_ = true;
};

} // namespace fadewell
