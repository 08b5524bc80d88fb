#include "platform/linux/pipewire/taps/TapStreams.h"

#include "base/SystemClock.h"
#include "platform/linux/pipewire/taps/TapBuffers.h"

#include <spa/param/audio/format-utils.h>
#include <spa/param/props.h>
#include <spa/pod/builder.h>
#include <spa/pod/iter.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <fmt/format.h>
#include <utility>

namespace fadewell::pipewire {
namespace {

// In ns: from the beginning of a cycle until every node has done its part, usually.
constexpr std::uint64_t soundPasses = 300'000;
// After so many that didn't come, nothing flows.
constexpr std::uint64_t missedCycles = 8;
// So many may be empty for a change of the graph.
constexpr std::uint32_t emptyCycles = 4;

// The server rounds down to a power of two, which at another rate falls short of the same time.
constexpr double leeway = 1.5;
// In frames: more than the server ever has in a cycle.
constexpr double endlessCycle = 8192;

std::uint64_t nanoseconds()
{
    return static_cast<std::uint64_t>(SystemClock().uptime() * 1e9);
}

/// Planar stereo floats at the graph's rate.
const spa_pod* stereoFormat(spa_pod_builder& builder)
{
    spa_audio_info_raw info{};
    info.format = SPA_AUDIO_FORMAT_F32P;
    info.channels = 2;
    info.position[0] = SPA_AUDIO_CHANNEL_FL;
    info.position[1] = SPA_AUDIO_CHANNEL_FR;
    return spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &info);
}

pw_properties* commonProperties(const TapStreams::Options& options)
{
    auto* props =
        pw_properties_new(PW_KEY_MEDIA_TYPE, "Audio", PW_KEY_NODE_VIRTUAL, "true", nullptr);
    // One driver for both streams even before anything is linked, and no loop through each other.
    pw_properties_set(props, PW_KEY_NODE_GROUP, options.name.c_str());
    pw_properties_set(props, PW_KEY_NODE_LINK_GROUP, options.name.c_str());
    pw_properties_set(props, PW_KEY_NODE_DESCRIPTION, options.title.c_str());
    return props;
}

} // namespace

std::unique_ptr<TapStreams>
TapStreams::create(Connection& connection, const Options& options, std::function<void()> changed)
{
    std::unique_ptr<TapStreams> streams(new TapStreams(connection, options, std::move(changed)));
    return connection.core() && streams->connect() ? std::move(streams) : nullptr;
}

TapStreams::TapStreams(Connection& connection,
                       const Options& options,
                       std::function<void()> changed)
    : connection_(connection)
    , options_(options)
    , changed_(std::move(changed))
    , sampleRate_(options.sampleRate)
    , render_(options.sampleRate)
{
    capture_.owner = this;
    output_.owner = this;
}

TapStreams::~TapStreams()
{
    changed_ = nullptr;
    // A trigger runs what other threads have asked of the audio thread, in the midst of the cycle
    // of `cap`; the end of `cap` would be among it, and the cycle go on in freed memory. After this
    // no cycle triggers any more.
    isEnding_ = true;
    synchronise();
    // What is still linked to `cap` must find it gone before `out`, or a cycle would find half a
    // tap.
    for (Side* side : {&capture_, &output_}) {
        if (side->stream) {
            spa_hook_remove(&side->hook);
            pw_stream_destroy(side->stream);
            setState(*side, PW_STREAM_STATE_UNCONNECTED);
        }
    }
}

bool TapStreams::connect()
{
    return connectOutput() && (options_.listensOnly || connectCapture());
}

bool TapStreams::connectOutput()
{
    static const pw_stream_events events = [] {
        pw_stream_events result{};
        result.version = PW_VERSION_STREAM_EVENTS;
        result.state_changed = onStateChanged;
        result.param_changed = onParamChanged;
        result.process = onOutputProcess;
        return result;
    }();
    static const pw_stream_events listenEvents = [] {
        pw_stream_events result = events;
        result.io_changed = onIOChanged;
        result.process = onListenProcess;
        return result;
    }();
    auto* props = commonProperties(options_);
    pw_properties_set(props, PW_KEY_MEDIA_CATEGORY, "Playback");
    pw_properties_set(props, PW_KEY_MEDIA_CLASS, "Stream/Output/Audio/Internal");
    pw_properties_set(props, PW_KEY_NODE_NAME, (options_.name + ".out").c_str());
    // The session manager remembers volumes by this name, for ever. All taps share one, which is
    // kept at full volume; one for each app, or even each process, would fill its memory.
    pw_properties_set(props, PW_KEY_MEDIA_NAME, "Fadewell output");
    pw_properties_set(props, "state.restore-props", "false");
    pw_properties_set(props, "state.restore-target", "false");
    if (!options_.target.empty()) {
        pw_properties_set(props, PW_KEY_TARGET_OBJECT, options_.target.c_str());
    }
    std::uint32_t flags =
        PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_RT_PROCESS;
    if (!options_.listensOnly) {
        // Passive: an idle tap lets its output sleep. Never on both streams, or nothing ever runs.
        pw_properties_set(props, PW_KEY_NODE_PASSIVE, "true");
        flags |= PW_STREAM_FLAG_TRIGGER;
    }
    output_.stream = pw_stream_new(connection_.core(), "Fadewell output", props);
    if (!output_.stream) {
        return false;
    }
    pw_stream_add_listener(
        output_.stream, &output_.hook, options_.listensOnly ? &listenEvents : &events, &output_);
    std::array<std::uint8_t, 1024> storage{};
    spa_pod_builder builder{};
    spa_pod_builder_init(&builder, storage.data(), storage.size());
    const spa_pod* format = stereoFormat(builder);
    return pw_stream_connect(output_.stream,
                             PW_DIRECTION_OUTPUT,
                             PW_ID_ANY,
                             static_cast<pw_stream_flags>(flags),
                             &format,
                             1) >= 0;
}

bool TapStreams::connectCapture()
{
    static const pw_stream_events events = [] {
        pw_stream_events result{};
        result.version = PW_VERSION_STREAM_EVENTS;
        result.state_changed = onStateChanged;
        result.param_changed = onParamChanged;
        result.io_changed = onIOChanged;
        result.process = onCaptureProcess;
        return result;
    }();
    auto* props = commonProperties(options_);
    pw_properties_set(props, PW_KEY_MEDIA_CLASS, "Audio/Sink/Internal");
    pw_properties_set(props, PW_KEY_NODE_NAME, options_.name.c_str());
    pw_properties_set(props, PW_KEY_MEDIA_NAME, "Fadewell tap");
    pw_properties_set(props, "audio.position", "[ FL FR ]");
    pw_properties_set(props, "session.suspend-timeout-seconds", "0");
    capture_.stream = pw_stream_new(connection_.core(), "Fadewell tap", props);
    if (!capture_.stream) {
        return false;
    }
    pw_stream_add_listener(capture_.stream, &capture_.hook, &events, &capture_);
    std::array<std::uint8_t, 1024> storage{};
    spa_pod_builder builder{};
    spa_pod_builder_init(&builder, storage.data(), storage.size());
    const spa_pod* format = stereoFormat(builder);
    constexpr std::uint32_t flags = PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_RT_PROCESS;
    return pw_stream_connect(capture_.stream,
                             PW_DIRECTION_INPUT,
                             PW_ID_ANY,
                             static_cast<pw_stream_flags>(flags),
                             &format,
                             1) >= 0;
}

void TapStreams::setAsleep(bool isAsleep)
{
    // What feeds must not run before what takes.
    pw_stream_set_active(output_.stream, !isAsleep);
    if (capture_.stream) {
        pw_stream_set_active(capture_.stream, !isAsleep);
    }
}

bool TapStreams::isReady() const
{
    const bool captures = options_.listensOnly || capture_.state >= PW_STREAM_STATE_PAUSED;
    return captures && output_.state >= PW_STREAM_STATE_PAUSED;
}

bool TapStreams::isStreaming() const
{
    const bool captures = options_.listensOnly || capture_.state == PW_STREAM_STATE_STREAMING;
    return captures && output_.state == PW_STREAM_STATE_STREAMING;
}

bool TapStreams::hasFailed() const
{
    return capture_.state == PW_STREAM_STATE_ERROR || output_.state == PW_STREAM_STATE_ERROR;
}

std::uint32_t TapStreams::captureNode() const
{
    return capture_.stream ? pw_stream_get_node_id(capture_.stream) : SPA_ID_INVALID;
}

std::uint32_t TapStreams::outputNode() const
{
    return pw_stream_get_node_id(output_.stream);
}

bool TapStreams::isFlowing() const
{
    const auto length = cycleLength_.load(std::memory_order_relaxed);
    const auto began = cycleBegan_.load(std::memory_order_relaxed);
    return isStreaming() && length > 0 && nanoseconds() < began + missedCycles * length;
}

bool TapStreams::isStarved() const
{
    return isFlowing() && emptyCycles_.load(std::memory_order_relaxed) >= emptyCycles;
}

void TapStreams::forceCycle(std::uint32_t frames)
{
    setProperty(PW_KEY_NODE_FORCE_QUANTUM, std::to_string(frames));
}

void TapStreams::keepCycle()
{
    const auto length = cycleLength_.load(std::memory_order_relaxed);
    if (isFlowing() && (keptCycle_ == 0 || length < keptCycle_)) {
        keptCycle_ = length;
        limitCycle(static_cast<double>(length) * 1e-9 * sampleRate_ * leeway);
    }
}

void TapStreams::letCycleGo()
{
    if (std::exchange(keptCycle_, 0) != 0) {
        limitCycle(endlessCycle);
    }
}

void TapStreams::limitCycle(double frames)
{
    setProperty(PW_KEY_NODE_MAX_LATENCY, fmt::format("{:.0f}/{:.0f}", frames, sampleRate_));
}

void TapStreams::setProperty(const char* key, const std::string& value)
{
    const spa_dict_item item = SPA_DICT_ITEM_INIT(key, value.c_str());
    const spa_dict properties = SPA_DICT_INIT(&item, 1);
    pw_stream_update_properties(output_.stream, &properties);
}

double TapStreams::untilQuietMoment() const
{
    if (!isFlowing()) {
        return 0;
    }
    const auto length = cycleLength_.load(std::memory_order_relaxed);
    const auto began = cycleBegan_.load(std::memory_order_relaxed);
    const auto now = std::max(nanoseconds(), began);
    const auto phase = (now - began) % length;
    if (phase >= soundPasses && phase < length / 4) {
        return 0;
    }
    const auto wait = phase < soundPasses ? soundPasses - phase : length - phase + soundPasses;
    return static_cast<double>(wait) * 1e-9;
}

void TapStreams::noteCycle()
{
    if (position_ && position_->clock.rate.denom > 0) {
        cycleBegan_.store(position_->clock.nsec, std::memory_order_relaxed);
        cycleLength_.store(position_->clock.duration * SPA_NSEC_PER_SEC *
                               position_->clock.rate.num / position_->clock.rate.denom,
                           std::memory_order_relaxed);
    }
}

void TapStreams::synchronise()
{
    constexpr auto nothing = [](spa_loop*, bool, std::uint32_t, const void*, std::size_t, void*) {
        return 0;
    };
    pw_data_loop_invoke(pw_context_get_data_loop(connection_.context()),
                        nothing,
                        SPA_ID_INVALID,
                        nullptr,
                        0,
                        /*block=*/true,
                        nullptr);
}

void TapStreams::heartbeat()
{
    constexpr auto beat = [](spa_loop*, bool, std::uint32_t, const void*, std::size_t, void* data) {
        auto* streams = static_cast<TapStreams*>(data);
        const Heartbeat::Callback callback(streams->connection_.heartbeat());
        streams->render_.heartbeat(AudioTimeStamp{});
        return 0;
    };
    pw_data_loop_invoke(pw_context_get_data_loop(connection_.context()),
                        beat,
                        SPA_ID_INVALID,
                        nullptr,
                        0,
                        /*block=*/true,
                        this);
}

AudioTimeStamp TapStreams::timeStamp() const
{
    AudioTimeStamp time;
    if (position_) {
        time.mSampleTime = static_cast<double>(position_->clock.position);
        time.mHostTime = position_->clock.nsec;
        time.mFlags = 3;
    }
    return time;
}

void TapStreams::onStateChanged(void* data,
                                pw_stream_state /*old*/,
                                pw_stream_state state,
                                const char* /*error*/)
{
    auto& side = *static_cast<Side*>(data);
    side.owner->setState(side, state);
    if (side.owner->changed_) {
        side.owner->changed_();
    }
}

void TapStreams::setState(Side& side, pw_stream_state state)
{
    const bool runs = state == PW_STREAM_STATE_STREAMING;
    const bool ran = std::exchange(side.state, state) == PW_STREAM_STATE_STREAMING;
    if (Heartbeat* heartbeat = connection_.heartbeat(); heartbeat && runs != ran) {
        runs ? heartbeat->streamStarted() : heartbeat->streamStopped();
    }
}

void TapStreams::onParamChanged(void* data, std::uint32_t id, const spa_pod* param)
{
    auto& side = *static_cast<Side*>(data);
    if (!param) {
        return;
    }
    if (id == SPA_PARAM_Format) {
        side.owner->formatChanged(param);
    } else if (id == SPA_PARAM_Props) {
        side.owner->keepFullVolume(side, param);
    }
}

void TapStreams::formatChanged(const spa_pod* format)
{
    spa_audio_info_raw info{};
    if (spa_format_audio_raw_parse(format, &info) < 0 || info.rate == 0) {
        return;
    }
    if (std::exchange(sampleRate_, info.rate) != info.rate) {
        render_.setSampleRate(info.rate);
        if (changed_) {
            changed_();
        }
    }
}

void TapStreams::keepFullVolume(Side& side, const spa_pod* props)
{
    bool isMuted = false;
    const auto* mute = spa_pod_find_prop(props, nullptr, SPA_PROP_mute);
    if (mute && spa_pod_get_bool(&mute->value, &isMuted) == 0 && isMuted) {
        float off = 0;
        pw_stream_set_control(side.stream, SPA_PROP_mute, 1, &off, 0);
    }
    std::array<float, SPA_AUDIO_MAX_CHANNELS> volumes{};
    const auto* property = spa_pod_find_prop(props, nullptr, SPA_PROP_channelVolumes);
    if (!property) {
        return;
    }
    const auto count =
        spa_pod_copy_array(&property->value, SPA_TYPE_Float, volumes.data(), volumes.size());
    const auto end = volumes.begin() + count;
    if (std::any_of(volumes.begin(), end, [](float volume) { return volume != 1.0F; })) {
        std::fill(volumes.begin(), end, 1.0F);
        pw_stream_set_control(side.stream, SPA_PROP_channelVolumes, count, volumes.data(), 0);
    }
}

void TapStreams::onIOChanged(void* data, std::uint32_t id, void* area, std::uint32_t /*size*/)
{
    if (id == SPA_IO_Position) {
        static_cast<Side*>(data)->owner->position_ = static_cast<spa_io_position*>(area);
    }
}

void TapStreams::onCaptureProcess(void* data)
{
    auto& self = *static_cast<Side*>(data)->owner;
    self.noteCycle();
    const Heartbeat::Callback callback(self.connection_.heartbeat());
    pw_buffer* buffer = dequeueNewest(self.capture_.stream);
    const bool isWhole = buffer && hasTwoPlanes(*buffer->buffer);
    const bool isEmpty = !isWhole || !hasSound(*buffer->buffer);
    const auto empty = self.emptyCycles_.load(std::memory_order_relaxed);
    self.emptyCycles_.store(isEmpty ? empty + 1 : 0, std::memory_order_relaxed);
    if (isWhole) {
        std::uint32_t frames = TapRender::maxFrames;
        const float* left = plane(buffer->buffer->datas[0], frames);
        const float* right = plane(buffer->buffer->datas[1], frames);
        self.pendingFrames_ = frames;
        self.render_.process({left, right},
                             {self.scratch_[0].data(), self.scratch_[1].data()},
                             frames,
                             self.timeStamp());
    } else {
        // Nothing to take: as much silence as the last cycle had sound.
        for (auto& samples : self.scratch_) {
            std::memset(samples.data(), 0, self.pendingFrames_ * sampleSize);
        }
    }
    if (buffer) {
        pw_stream_queue_buffer(self.capture_.stream, buffer);
    }
    if (!self.isEnding_) {
        pw_stream_trigger_process(self.output_.stream);
    }
}

void TapStreams::onOutputProcess(void* data)
{
    auto& self = *static_cast<Side*>(data)->owner;
    const Heartbeat::Callback callback(self.connection_.heartbeat());
    pw_buffer* buffer = pw_stream_dequeue_buffer(self.output_.stream);
    if (!buffer) {
        return;
    }
    std::uint32_t frames = 0;
    if (hasTwoPlanes(*buffer->buffer)) {
        frames = std::min(self.pendingFrames_, capacity(*buffer->buffer));
        for (std::size_t channel = 0; channel < 2; ++channel) {
            std::memcpy(buffer->buffer->datas[channel].data,
                        self.scratch_[channel].data(),
                        frames * sampleSize);
        }
    }
    finish(*buffer->buffer, frames);
    pw_stream_queue_buffer(self.output_.stream, buffer);
}

void TapStreams::onListenProcess(void* data)
{
    auto& self = *static_cast<Side*>(data)->owner;
    const Heartbeat::Callback callback(self.connection_.heartbeat());
    pw_buffer* buffer = pw_stream_dequeue_buffer(self.output_.stream);
    if (!buffer) {
        return;
    }
    std::uint32_t frames = 0;
    if (hasTwoPlanes(*buffer->buffer)) {
        const auto wanted = buffer->requested > 0 ? buffer->requested : TapRender::maxFrames;
        frames =
            static_cast<std::uint32_t>(std::min<std::uint64_t>(wanted, capacity(*buffer->buffer)));
        auto* datas = buffer->buffer->datas;
        self.render_.processOutputOnly(
            {static_cast<float*>(datas[0].data), static_cast<float*>(datas[1].data)},
            frames,
            self.timeStamp());
    }
    finish(*buffer->buffer, frames);
    pw_stream_queue_buffer(self.output_.stream, buffer);
}

} // namespace fadewell::pipewire
