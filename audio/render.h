#pragma once

#include "audio/AudioTypes.h"

#include <atomic>
#include <cstdint>

namespace fadewell {

/// What the control side and the audio thread share about one output path, without locks.
struct RenderState {
    std::atomic<float> targetGain{1.0F}; ///< control side, 0 to 1
    std::atomic<float> targetDuck{1.0F}; ///< control side, 0 to 1
    std::atomic<bool> hasSignal{false};  ///< set once, by the first rendered sample that is not 0
    std::atomic<std::uint64_t> callbackCount{0};
    float currentGain = 1.0F;      ///< audio thread only
    float currentDuck = 1.0F;      ///< audio thread only
    float gainCoefficient = 0;     ///< per sample
    float duckDownCoefficient = 0; ///< per sample, while the duck falls
    float duckUpCoefficient = 0;   ///< per sample, while the duck rises
};

/// One channel within a buffer list.
struct ChannelRef {
    float* samples = nullptr;
    std::uint32_t stride = 0; ///< in samples
    std::uint32_t frames = 0;
};

/// Starts at the given gain and duck, clamped to 0 to 1. Null when memory is exhausted. [control]
[[nodiscard]] RenderState* render_state_create(float gain, float duck, double sampleRate);
void render_state_destroy(RenderState* state);

// [control] take effect at the next callback, then ramp
void render_state_set_gain(RenderState* state, float value);
void render_state_set_duck(RenderState* state, float value);
[[nodiscard]] float render_state_gain(const RenderState* state);
[[nodiscard]] bool render_state_has_signal(const RenderState* state);
[[nodiscard]] std::uint64_t render_state_callback_count(const RenderState* state);

/// Goes on from the gain and duck that `from` has reached, towards its own targets. [audio thread]
void render_state_continue(RenderState* state, const RenderState* from) noexcept;

/// The I/O procedure; its client data is a RenderState. [audio thread]
OSStatus render_io_proc(AudioObjectID device,
                        const AudioTimeStamp* now,
                        const AudioBufferList* input,
                        const AudioTimeStamp* inputTime,
                        AudioBufferList* output,
                        const AudioTimeStamp* outputTime,
                        void* client) noexcept;

/// Copies input to output with the ramped gain and duck applied; what is not rendered is zeroed.
/// The buffers of one list do not overlap those of the other. [audio thread]
void render_process(RenderState* state,
                    const AudioBufferList* input,
                    AudioBufferList* output) noexcept;

/// Where a channel lies in a list; false when the list doesn't have it. [any thread]
bool find_channel(const AudioBufferList* list, std::uint32_t channel, ChannelRef* result) noexcept;

} // namespace fadewell
