#pragma once

#include "audio/AudioTypes.h"

#include <atomic>
#include <cstdint>

namespace fadewell {

/// An I/O procedure that judges what it is given and plays silence. Read from any thread.
class ProbeProcedure final {
public:
    enum class Complaint {
        none,
        missingList, ///< no input or no output list
        missingData, ///< a buffer with bytes but no data
        implausible  ///< a buffer of more frames than any sound system asks for
    };

    [[nodiscard]] std::uint64_t calls() const { return calls_; }
    /// Whether any input sample was not 0.
    [[nodiscard]] bool hasHeard() const { return hasHeard_; }
    [[nodiscard]] Complaint complaint() const { return complaint_; }

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
        if (!input || !output) {
            probe.complaint_ = Complaint::missingList;
            return 0;
        }
        for (std::uint32_t i = 0; i < input->mNumberBuffers; ++i) {
            probe.judge(input->mBuffers[i]);
            probe.listen(input->mBuffers[i]);
        }
        for (std::uint32_t i = 0; i < output->mNumberBuffers; ++i) {
            probe.judge(output->mBuffers[i]);
            probe.silence(output->mBuffers[i]);
        }
        return 0;
    }

private:
    void judge(const AudioBuffer& buffer)
    {
        if (buffer.mDataByteSize > 0 && !buffer.mData) {
            complaint_ = Complaint::missingData;
        }
        if (std::uint64_t{buffer.mDataByteSize} > std::uint64_t{65536} * 4 * buffer.mNumberChannels)
        {
            complaint_ = Complaint::implausible;
        }
    }

    void listen(const AudioBuffer& buffer)
    {
        const auto* samples = static_cast<const float*>(buffer.mData);
        for (std::uint32_t i = 0; samples && i < buffer.mDataByteSize / sizeof(float); ++i) {
            if (samples[i] != 0) {
                hasHeard_ = true;
            }
        }
    }

    static void silence(const AudioBuffer& buffer)
    {
        auto* samples = static_cast<float*>(buffer.mData);
        for (std::uint32_t i = 0; samples && i < buffer.mDataByteSize / sizeof(float); ++i) {
            samples[i] = 0;
        }
    }

    std::atomic<std::uint64_t> calls_ = 0;
    std::atomic<bool> hasHeard_ = false;
    std::atomic<Complaint> complaint_ = Complaint::none;
};

} // namespace fadewell
