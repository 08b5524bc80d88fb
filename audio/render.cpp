#include "audio/render.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <new>

namespace fadewell {
namespace {

constexpr float snapDistance = 1e-5F;
constexpr std::uint32_t chunkFrames = 256;

#define RENDER_INLINE inline __attribute__((always_inline))

float clampToUnit(float value)
{
    return value > 0.0F ? std::min(value, 1.0F) : 0.0F;
}

float coefficientFor(double sampleRate, double timeConstant)
{
    const double rate = sampleRate > 0 ? sampleRate : 48000.0;
    return static_cast<float>(1.0 - std::exp(-1.0 / (rate * timeConstant)));
}

/// A value on its way to a target, one step a sample.
struct Ramp {
    float value;
    float target;
    float coefficient;

    RENDER_INLINE void advance() { value = __builtin_fmaf(target - value, coefficient, value); }

    [[nodiscard]] RENDER_INLINE bool isAboutToArrive() const
    {
        const float rest = target - value;
        return std::fabs(rest) < snapDistance && rest != 0.0F;
    }

    RENDER_INLINE void arrive()
    {
        if (isAboutToArrive()) {
            value = target;
        }
    }

    /// In single precision a step may round to nothing before the target is reached: what counts is
    /// that no further step will change the value.
    [[nodiscard]] RENDER_INLINE bool isSettled() const
    {
        Ramp next = *this;
        next.advance();
        next.arrive();
        return next.value == value;
    }
};

/// From where to where one callback's samples go.
struct Route {
    ChannelRef left;
    ChannelRef right;
    ChannelRef outLeft;
    ChannelRef outRight; ///< without samples: everything goes to the left one
    std::uint32_t frames = 0;

    [[nodiscard]] RENDER_INLINE bool isStereo() const { return outRight.samples != nullptr; }
};

[[nodiscard]] RENDER_INLINE bool isInterleavedPair(const ChannelRef& left, const ChannelRef& right)
{
    return left.stride == 2 && right.stride == 2 && right.samples == left.samples + 1;
}

/// The same factor for every sample.
struct ConstantFactor {
    float value;
    RENDER_INLINE float operator[](std::size_t /*frame*/) const { return value; }
};

template <class Factor>
RENDER_INLINE void scale(const float* __restrict from,
                         float* __restrict into,
                         std::size_t channels,
                         std::size_t frames,
                         Factor factor)
{
    for (std::size_t frame = 0; frame < frames; ++frame) {
        for (std::size_t channel = 0; channel < channels; ++channel) {
            const std::size_t i = frame * channels + channel;
            into[i] = factor[frame] * from[i];
        }
    }
}

template <class Factor>
RENDER_INLINE void
scaleStrided(const ChannelRef& from, const ChannelRef& into, std::size_t frames, Factor factor)
{
    const float* __restrict source = from.samples;
    float* __restrict target = into.samples;
    for (std::size_t i = 0; i < frames; ++i) {
        target[i * into.stride] = factor[i] * source[i * from.stride];
    }
}

template <class Factor>
RENDER_INLINE void
scaleChannel(const ChannelRef& from, const ChannelRef& into, std::size_t frames, Factor factor)
{
    if (from.stride == 1 && into.stride == 1) {
        scale(from.samples, into.samples, 1, frames, factor);
    } else {
        scaleStrided(from, into, frames, factor);
    }
}

template <class Factor>
RENDER_INLINE void mixDown(const Route& route, std::size_t frames, Factor factor)
{
    const float* __restrict left = route.left.samples;
    const float* __restrict right = route.right.samples;
    float* __restrict target = route.outLeft.samples;
    for (std::size_t i = 0; i < frames; ++i) {
        const float sum =
            factor[i] * left[i * route.left.stride] + factor[i] * right[i * route.right.stride];
        target[i * route.outLeft.stride] = sum * 0.5F;
    }
}

template <class Factor>
RENDER_INLINE void apply(const Route& route, std::size_t frames, Factor factor)
{
    if (!route.isStereo()) {
        mixDown(route, frames, factor);
    } else if (isInterleavedPair(route.left, route.right) &&
               isInterleavedPair(route.outLeft, route.outRight))
    {
        scale(route.left.samples, route.outLeft.samples, 2, frames, factor);
    } else {
        scaleChannel(route.left, route.outLeft, frames, factor);
        scaleChannel(route.right, route.outRight, frames, factor);
    }
}

[[nodiscard]] RENDER_INLINE Route advanced(Route route, std::size_t frames)
{
    for (ChannelRef* channel : {&route.left, &route.right, &route.outLeft, &route.outRight}) {
        if (channel->samples) {
            channel->samples += frames * channel->stride;
        }
    }
    return route;
}

/// The product of both ramps, sample by sample.
RENDER_INLINE void fillFactors(Ramp& gain, Ramp& duck, float* factors, std::uint32_t count)
{
    // Copies: through the references every step would go through memory.
    Ramp gainNow = gain;
    Ramp duckNow = duck;
    for (std::uint32_t i = 0; i < count; ++i) {
        gainNow.advance();
        duckNow.advance();
        // One rare branch for both: what follows it does not wait for the comparisons.
        if (__builtin_expect(gainNow.isAboutToArrive() || duckNow.isAboutToArrive(), 0)) {
            gainNow.arrive();
            duckNow.arrive();
        }
        factors[i] = gainNow.value * duckNow.value;
    }
    gain.value = gainNow.value;
    duck.value = duckNow.value;
}

/// Renders chunk by chunk until both ramps are settled, and then the rest at once.
RENDER_INLINE void renderFrames(Route route, Ramp& gain, Ramp& duck)
{
    std::uint32_t done = 0;
    while (done < route.frames) {
        const std::uint32_t rest = route.frames - done;
        const Route chunk = advanced(route, done);
        if (gain.isSettled() && duck.isSettled()) {
            apply(chunk, rest, ConstantFactor{gain.value * duck.value});
            return;
        }
        std::array<float, chunkFrames> factors;
        const std::uint32_t count = std::min(rest, chunkFrames);
        fillFactors(gain, duck, factors.data(), count);
        apply(chunk, count, static_cast<const float*>(factors.data()));
        done += count;
    }
}

/// Whether any sample is not 0 (of either sign).
RENDER_INLINE bool anySample(const ChannelRef& channel, std::uint32_t frames)
{
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < frames; ++i) {
        std::uint32_t sample = 0;
        std::memcpy(&sample, channel.samples + i * channel.stride, sizeof sample);
        bits |= sample;
    }
    return (bits & 0x7FFFFFFFU) != 0;
}

using RenderFrames = void (*)(Route, Ramp&, Ramp&);

void renderFramesPlain(Route route, Ramp& gain, Ramp& duck)
{
    renderFrames(route, gain, duck);
}

// A build may leave the fused form out, to test the plain one on a machine that would not choose
// it.
#if defined(__x86_64__) && !defined(FADEWELL_RENDER_PLAIN)
__attribute__((target("avx2,fma"))) void renderFramesFused(Route route, Ramp& gain, Ramp& duck)
{
    renderFrames(route, gain, duck);
}

RenderFrames chooseRenderFrames()
{
    __builtin_cpu_init();
    const bool canFuse = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
    return canFuse ? renderFramesFused : renderFramesPlain;
}
#else
RenderFrames chooseRenderFrames()
{
    return renderFramesPlain;
}
#endif

// Chosen when the program loads: the audio thread only calls it.
const RenderFrames renderFramesHere = chooseRenderFrames();

/// The samples of one buffer that belong to the first two channels of an output of this shape.
bool isFullyRendered(const AudioBuffer& buffer, const Route& route)
{
    const auto* first = static_cast<const float*>(buffer.mData);
    const auto* end = first + buffer.mNumberChannels;
    const auto lies = [&](const ChannelRef& channel) {
        return channel.samples >= first && channel.samples < end;
    };
    const std::uint32_t rendered = std::uint32_t{lies(route.outLeft)} +
                                   std::uint32_t{route.isStereo() && lies(route.outRight)};
    return buffer.mNumberChannels > 0 && rendered == buffer.mNumberChannels;
}

/// Zeroes all that the route will not write.
void silence(AudioBufferList* output, const Route& route)
{
    for (std::uint32_t i = 0; i < output->mNumberBuffers; ++i) {
        const AudioBuffer& buffer = output->mBuffers[i];
        if (!buffer.mData) {
            continue;
        }
        std::size_t start = 0;
        if (route.frames > 0 && isFullyRendered(buffer, route)) {
            start = std::size_t{route.frames} * buffer.mNumberChannels * sizeof(float);
        }
        std::memset(static_cast<std::byte*>(buffer.mData) + start, 0, buffer.mDataByteSize - start);
    }
}

/// A route of 0 frames when there is nothing to render.
Route findRoute(const AudioBufferList* input, const AudioBufferList* output)
{
    Route route;
    if (!find_channel(input, 0, &route.left) || !find_channel(output, 0, &route.outLeft)) {
        return {};
    }
    // A mono input feeds both sides.
    if (!find_channel(input, 1, &route.right)) {
        route.right = route.left;
    }
    find_channel(output, 1, &route.outRight);
    route.frames = std::min({route.left.frames, route.right.frames, route.outLeft.frames});
    if (route.isStereo()) {
        route.frames = std::min(route.frames, route.outRight.frames);
    }
    return route;
}

} // namespace

RenderState* render_state_create(float gain, float duck, double sampleRate)
{
    auto* state = new (std::nothrow) RenderState;
    if (state) {
        state->currentGain = clampToUnit(gain);
        state->currentDuck = clampToUnit(duck);
        state->targetGain = state->currentGain;
        state->targetDuck = state->currentDuck;
        state->gainCoefficient = coefficientFor(sampleRate, 0.015);
        state->duckDownCoefficient = coefficientFor(sampleRate, 0.15);
        state->duckUpCoefficient = coefficientFor(sampleRate, 0.35);
    }
    return state;
}

void render_state_destroy(RenderState* state)
{
    delete state;
}

void render_state_set_gain(RenderState* state, float value)
{
    state->targetGain.store(clampToUnit(value), std::memory_order_relaxed);
}

void render_state_set_duck(RenderState* state, float value)
{
    state->targetDuck.store(clampToUnit(value), std::memory_order_relaxed);
}

float render_state_gain(const RenderState* state)
{
    return state->targetGain.load(std::memory_order_relaxed);
}

bool render_state_has_signal(const RenderState* state)
{
    return state->hasSignal.load(std::memory_order_relaxed);
}

std::uint64_t render_state_callback_count(const RenderState* state)
{
    return state->callbackCount.load(std::memory_order_relaxed);
}

void render_state_continue(RenderState* state, const RenderState* from) noexcept
{
    state->currentGain = from->currentGain;
    state->currentDuck = from->currentDuck;
}

OSStatus render_io_proc(AudioObjectID /*device*/,
                        const AudioTimeStamp* /*now*/,
                        const AudioBufferList* input,
                        const AudioTimeStamp* /*inputTime*/,
                        AudioBufferList* output,
                        const AudioTimeStamp* /*outputTime*/,
                        void* client) noexcept
{
    if (client) {
        render_process(static_cast<RenderState*>(client), input, output);
    }
    return kAudioHardwareNoError;
}

void render_process(RenderState* state,
                    const AudioBufferList* input,
                    AudioBufferList* output) noexcept
{
    // Counted before anything else: also a call with nothing to do is a sign of life.
    state->callbackCount.fetch_add(1, std::memory_order_relaxed);
    if (!output) {
        return;
    }
    const Route route = findRoute(input, output);
    silence(output, route);
    if (route.frames == 0) {
        return;
    }
    const float targetDuck = state->targetDuck.load(std::memory_order_relaxed);
    Ramp gain{state->currentGain,
              state->targetGain.load(std::memory_order_relaxed),
              state->gainCoefficient};
    Ramp duck{state->currentDuck,
              targetDuck,
              state->currentDuck > targetDuck ? state->duckDownCoefficient
                                              : state->duckUpCoefficient};
    renderFramesHere(route, gain, duck);
    state->currentGain = gain.value;
    state->currentDuck = duck.value;
    if (!state->hasSignal.load(std::memory_order_relaxed) &&
        (anySample(route.left, route.frames) || anySample(route.right, route.frames)))
    {
        state->hasSignal.store(true, std::memory_order_relaxed);
    }
}

bool find_channel(const AudioBufferList* list, std::uint32_t channel, ChannelRef* result) noexcept
{
    if (!list) {
        return false;
    }
    std::uint64_t base = 0;
    for (std::uint32_t i = 0; i < list->mNumberBuffers; ++i) {
        const AudioBuffer& buffer = list->mBuffers[i];
        if (buffer.mNumberChannels == 0 || !buffer.mData) {
            continue;
        }
        if (channel < base + buffer.mNumberChannels) {
            const std::uint64_t frameBytes = std::uint64_t{buffer.mNumberChannels} * sizeof(float);
            *result = {static_cast<float*>(buffer.mData) + (channel - base),
                       buffer.mNumberChannels,
                       static_cast<std::uint32_t>(buffer.mDataByteSize / frameBytes)};
            return true;
        }
        base += buffer.mNumberChannels;
    }
    return false;
}

} // namespace fadewell
