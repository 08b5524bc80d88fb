#include "platform/linux/pipewire/taps/TapRender.h"

#include "audio/render.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>

namespace fadewell {
namespace {

// Long enough that the slope is inaudible, short enough to be over within a quantum or two.
constexpr double blendSeconds = 0.010;

// Quieter samples say too little about the gain that was applied to them.
constexpr float audible = 1e-4F;

// An app that asked for longer cycles takes its wish along when it leaves an output, which then
// plays no more of the last one than this.
constexpr std::uint32_t usualFrames = 1024;

/// Two mono buffers, laid out as a list of two.
struct StereoList {
    StereoList(const std::array<float*, 2>& planes, std::uint32_t frames)
    {
        for (std::size_t channel = 0; channel < 2; ++channel) {
            buffers[channel] = {
                1, frames * static_cast<std::uint32_t>(sizeof(float)), planes[channel]};
        }
    }
    AudioBufferList* list() { return reinterpret_cast<AudioBufferList*>(this); }

    std::uint32_t count = 2;
    AudioBuffer buffers[2];
};
static_assert(offsetof(StereoList, buffers) == offsetof(AudioBufferList, mBuffers));

bool isSilent(const std::array<const float*, 2>& planes, std::uint32_t frames)
{
    // Folding magnitudes lets the compiler check many samples at once.
    float loudest = 0;
    for (const float* plane : planes) {
        for (std::uint32_t frame = 0; frame < frames; ++frame) {
            loudest = std::max(loudest, std::fabs(plane[frame]));
        }
    }
    return loudest == 0;
}

void continueFromPredecessor(TapRender::Procedure& procedure)
{
    const auto* from = procedure.predecessor.load(std::memory_order_acquire);
    if (!from) {
        return;
    }
    procedure.predecessor.store(nullptr, std::memory_order_relaxed);
    if (procedure.call == render_io_proc && from->call == render_io_proc) {
        render_state_continue(static_cast<RenderState*>(procedure.client),
                              static_cast<const RenderState*>(from->client));
    }
}

void clear(const std::array<float*, 2>& planes, std::uint32_t frames)
{
    for (float* plane : planes) {
        std::memset(plane, 0, frames * sizeof(float));
    }
}

} // namespace

TapRender::TapRender(double sampleRate)
{
    setSampleRate(sampleRate);
}

void TapRender::setSampleRate(double sampleRate)
{
    step_ = static_cast<float>(1.0 / (blendSeconds * (sampleRate > 0 ? sampleRate : 48000.0)));
}

void TapRender::process(const Input& input,
                        const Output& output,
                        std::uint32_t frames,
                        const AudioTimeStamp& time) noexcept
{
    const bool hasSignal = !isSilent(input, frames);
    Procedure* procedure = procedure_.load(std::memory_order_acquire);
    if (!procedure) {
        passThrough(input, output, frames);
    } else if (hasSignal) {
        callProcedure(*procedure, input, output, frames, time);
        rememberGain(input, output, frames);
        blend(input, output, frames);
    } else if (isBlendPending() || isAwaiting_.load(std::memory_order_acquire)) {
        clear(output, frames);
        heartbeat(time);
    } else if (procedure->isStarted.load(std::memory_order_acquire)) {
        callProcedure(*procedure, input, output, frames, time);
        blend(input, output, frames);
    } else {
        clear(output, frames);
    }
    fade(output, frames);
}

void TapRender::heartbeat(const AudioTimeStamp& time) noexcept
{
    Procedure* procedure = procedure_.load(std::memory_order_acquire);
    if (procedure && procedure->isStarted.load(std::memory_order_acquire)) {
        float nothing = 0;
        callProcedure(*procedure, {&nothing, &nothing}, {&nothing, &nothing}, 0, time);
    }
}

void TapRender::processOutputOnly(const Output& output,
                                  std::uint32_t frames,
                                  const AudioTimeStamp& time) noexcept
{
    clear(output, frames);
    Procedure* procedure = procedure_.load(std::memory_order_acquire);
    if (!procedure || !procedure->isStarted.load(std::memory_order_acquire)) {
        return;
    }
    AudioBufferList none;
    StereoList list(output, frames);
    procedure->call(procedure->device, &time, &none, &time, list.list(), &time, procedure->client);
    calls_.fetch_add(1, std::memory_order_relaxed);
}

void TapRender::callProcedure(Procedure& procedure,
                              const Input& input,
                              const Output& output,
                              std::uint32_t frames,
                              const AudioTimeStamp& time) noexcept
{
    // The procedure's buffer list has no read-only form; it reads its input only.
    continueFromPredecessor(procedure);
    StereoList in({const_cast<float*>(input[0]), const_cast<float*>(input[1])}, frames);
    StereoList out(output, frames);
    procedure.call(procedure.device, &time, in.list(), &time, out.list(), &time, procedure.client);
    calls_.fetch_add(1, std::memory_order_relaxed);
}

void TapRender::rememberGain(const Input& input,
                             const Output& output,
                             std::uint32_t frames) noexcept
{
    for (std::uint32_t frame = frames; frame > 0; --frame) {
        for (std::size_t channel = 0; channel < 2; ++channel) {
            const float sample = input[channel][frame - 1];
            if (std::fabs(sample) > audible) {
                lastGain_ = std::clamp(output[channel][frame - 1] / sample, 0.0F, 1.0F);
                return;
            }
        }
    }
}

void TapRender::passThrough(const Input& input, const Output& output, std::uint32_t frames) noexcept
{
    const float step = step_.load(std::memory_order_relaxed);
    float gain = 1.0F;
    for (std::uint32_t frame = 0; frame < frames; ++frame) {
        gain = std::min(lastGain_ + step * static_cast<float>(frame + 1), 1.0F);
        output[0][frame] = input[0][frame] * gain;
        output[1][frame] = input[1][frame] * gain;
    }
    lastGain_ = frames > 0 ? gain : lastGain_;
}

bool TapRender::isBlendPending() noexcept
{
    if (wantsBlend_.exchange(false, std::memory_order_acq_rel)) {
        isBlendPending_ = true;
    }
    return isBlendPending_;
}

void TapRender::blend(const Input& input, const Output& output, std::uint32_t frames) noexcept
{
    // It is called with silence only while none is pending.
    if (isBlendPending()) {
        isBlendPending_ = false;
        wetness_ = 0;
    }
    if (wetness_ >= 1.0F) {
        return;
    }
    const float step = step_.load(std::memory_order_relaxed);
    for (std::uint32_t frame = 0; frame < frames; ++frame) {
        for (std::size_t channel = 0; channel < 2; ++channel) {
            const float dry = input[channel][frame];
            output[channel][frame] = dry + (output[channel][frame] - dry) * wetness_;
        }
        wetness_ = std::min(wetness_ + step, 1.0F);
    }
}

void TapRender::fade(const Output& output, std::uint32_t frames) noexcept
{
    const float target = wantsSilence_.load(std::memory_order_acquire) ? 0.0F : 1.0F;
    if (level_ != target || target == 0.0F) {
        const float step = step_.load(std::memory_order_relaxed);
        for (std::uint32_t frame = framesBeforeFade(target, frames); frame < frames; ++frame) {
            level_ =
                target > level_ ? std::min(level_ + step, target) : std::max(level_ - step, target);
            output[0][frame] *= level_;
            output[1][frame] *= level_;
        }
    }
    const float inaudible = 1.5F * step_.load(std::memory_order_relaxed);
    isSilent_.store(target == 0.0F && level_ < inaudible, std::memory_order_release);
}

/// A fade-out ends with a cycle: no frame after it is lost to the move that it is for.
std::uint32_t TapRender::framesBeforeFade(float target, std::uint32_t frames) const noexcept
{
    if (target != 0.0F || level_ != 1.0F || frames == 0) {
        return 0;
    }
    const auto length =
        static_cast<std::uint32_t>(std::ceil(1.0F / step_.load(std::memory_order_relaxed)));
    // One frame short of silence, which would be one that isn't heard.
    const std::uint32_t heard = std::min(frames, usualFrames);
    return (heard - (length - 1) % heard) % heard;
}

} // namespace fadewell
