#pragma once

#include "audio/AudioTypes.h"

#include <array>
#include <atomic>
#include <cstdint>

namespace fadewell {

/// What the audio thread does with one tap's sound: calls the I/O procedure, and hides the seams
/// where sound comes into the tap, leaves it or moves. Planar stereo, without the sound server.
///
/// The control side sets wishes; each takes effect at the next cycle and never clicks.
class TapRender final {
public:
    /// An I/O procedure as the audio thread sees it. Outlives its last use: see setProcedure().
    struct Procedure {
        AudioDeviceIOProc call = nullptr;
        void* client = nullptr;
        AudioObjectID device = 0;
        std::atomic<bool> isStarted{false};
        /// Whose level the first call goes on from, where both render; lives until then.
        std::atomic<const Procedure*> predecessor{nullptr};
    };

    /// Most frames a cycle can have: the server's own limit.
    static constexpr std::uint32_t maxFrames = 8192;

    explicit TapRender(double sampleRate);

    // [control] ---------------------------------------------------------------------------------

    /// Sets the procedure to call; none passes the sound through, coming back to full level from
    /// wherever it was. The audio thread may still be inside the old one when this returns.
    void setProcedure(Procedure* procedure)
    {
        procedure_.store(procedure, std::memory_order_release);
    }
    [[nodiscard]] Procedure* procedure() const
    {
        return procedure_.load(std::memory_order_acquire);
    }

    /// The next sound to arrive was heard directly until now: begin unprocessed and blend over.
    void blendIn() { wantsBlend_.store(true, std::memory_order_release); }

    /// A stream is about to be moved here: until there is something to hear, here or after
    /// blendIn(), a started procedure is called without frames, so that its ramps wait too.
    void setAwaiting(bool awaiting) { isAwaiting_.store(awaiting, std::memory_order_release); }

    /// Fades everything out until the end of a cycle, or in again at once.
    void setFadedOut(bool fadedOut) { wantsSilence_.store(fadedOut, std::memory_order_release); }
    [[nodiscard]] bool isFadedOut() const { return isSilent_.load(std::memory_order_acquire); }

    void setSampleRate(double sampleRate);

    /// Cycles that reached a procedure, heartbeats included.
    [[nodiscard]] std::uint64_t calls() const { return calls_.load(std::memory_order_relaxed); }

    // [audio thread] ----------------------------------------------------------------------------

    /// One cycle. `input` and `output` are two planes of at least `frames` samples; no allocation,
    /// lock or system call.
    void process(const std::array<const float*, 2>& input,
                 const std::array<float*, 2>& output,
                 std::uint32_t frames,
                 const AudioTimeStamp& time) noexcept;

    /// Calls a started procedure with no frames, so that its owner sees that nothing is stuck.
    void heartbeat(const AudioTimeStamp& time) noexcept;

    /// Calls the procedure without input: for taps that only listen.
    void processOutputOnly(const std::array<float*, 2>& output,
                           std::uint32_t frames,
                           const AudioTimeStamp& time) noexcept;

private:
    using Input = std::array<const float*, 2>;
    using Output = std::array<float*, 2>;

    void callProcedure(Procedure& procedure,
                       const Input& input,
                       const Output& output,
                       std::uint32_t frames,
                       const AudioTimeStamp& time) noexcept;
    void rememberGain(const Input& input, const Output& output, std::uint32_t frames) noexcept;
    void passThrough(const Input& input, const Output& output, std::uint32_t frames) noexcept;
    void blend(const Input& input, const Output& output, std::uint32_t frames) noexcept;
    void fade(const Output& output, std::uint32_t frames) noexcept;
    [[nodiscard]] bool isBlendPending() noexcept;
    [[nodiscard]] std::uint32_t framesBeforeFade(float target, std::uint32_t frames) const noexcept;

    std::atomic<Procedure*> procedure_{nullptr};
    std::atomic<bool> wantsBlend_{false};
    std::atomic<bool> isAwaiting_{false};
    std::atomic<bool> wantsSilence_{false};
    std::atomic<bool> isSilent_{false};
    std::atomic<float> step_; ///< per frame, of every blend and fade
    std::atomic<std::uint64_t> calls_{0};

    // Audio thread only.
    float lastGain_ = 1.0F; ///< what the procedure last applied
    float wetness_ = 1.0F;  ///< 0 is unprocessed
    bool isBlendPending_ = false;
    float level_ = 1.0F; ///< of the fade
};

} // namespace fadewell
