#include "demo/LevelMeter.h"

#include <spa/param/audio/format-utils.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace fadewell::demo {

LevelMeter::LevelMeter(pw_core* core, const std::string& outputName)
    : stream_(pw_stream_new(core,
                            "Level",
                            // A monitor: nobody's use of a microphone. Never of another output.
                            pw_properties_new(PW_KEY_MEDIA_TYPE,
                                              "Audio",
                                              PW_KEY_MEDIA_CATEGORY,
                                              "Capture",
                                              PW_KEY_STREAM_CAPTURE_SINK,
                                              "true",
                                              PW_KEY_STREAM_MONITOR,
                                              "true",
                                              PW_KEY_NODE_DONT_RECONNECT,
                                              "true",
                                              PW_KEY_TARGET_OBJECT,
                                              outputName.c_str(),
                                              nullptr)))
{
    if (stream_ != nullptr) {
        connect();
    }
}

LevelMeter::~LevelMeter()
{
    if (stream_ != nullptr) {
        pw_stream_destroy(stream_);
    }
}

void LevelMeter::connect()
{
    static const pw_stream_events events = [] {
        pw_stream_events made{};
        made.version = PW_VERSION_STREAM_EVENTS;
        made.process = &LevelMeter::onProcess;
        return made;
    }();
    pw_stream_add_listener(stream_, &listener_, &events, this);
    spa_audio_info_raw info{};
    info.format = SPA_AUDIO_FORMAT_F32;
    info.channels = 2;
    info.position[0] = SPA_AUDIO_CHANNEL_FL;
    info.position[1] = SPA_AUDIO_CHANNEL_FR;
    std::array<std::uint8_t, 1024> space{};
    spa_pod_builder builder{};
    spa_pod_builder_init(&builder, space.data(), space.size());
    const spa_pod* format = spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &info);
    const auto flags = static_cast<pw_stream_flags>(
        PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_RT_PROCESS);
    // A refusal shows as an output that isn't measured.
    pw_stream_connect(stream_, PW_DIRECTION_INPUT, PW_ID_ANY, flags, &format, 1);
}

void LevelMeter::onProcess(void* data)
{
    auto& meter = *static_cast<LevelMeter*>(data);
    pw_buffer* buffer = pw_stream_dequeue_buffer(meter.stream_);
    if (buffer == nullptr) {
        return;
    }
    const spa_data& plane = buffer->buffer->datas[0];
    if (plane.data != nullptr) {
        const std::uint32_t offset = std::min(plane.chunk->offset, plane.maxsize);
        const std::uint32_t bytes = std::min(plane.chunk->size, plane.maxsize - offset);
        const auto* first = static_cast<const std::byte*>(plane.data) + offset;
        meter.measure({reinterpret_cast<const float*>(first), bytes / sizeof(float)});
    }
    pw_stream_queue_buffer(meter.stream_, buffer);
}

void LevelMeter::measure(std::span<const float> samples)
{
    double squares = 0.0;
    float peak = peak_.load(std::memory_order_relaxed);
    const float before = peak;
    for (const float sample : samples) {
        squares += static_cast<double>(sample) * static_cast<double>(sample);
        peak = std::max(peak, std::abs(sample));
    }
    squares_.fetch_add(squares, std::memory_order_relaxed);
    if (peak > before) {
        peak_.store(peak, std::memory_order_relaxed);
    }
    samples_.fetch_add(samples.size(), std::memory_order_relaxed);
}

std::optional<LevelMeter::Level> LevelMeter::take()
{
    const std::uint64_t samples = samples_.exchange(0, std::memory_order_relaxed);
    const double squares = squares_.exchange(0.0, std::memory_order_relaxed);
    const float peak = peak_.exchange(0.0F, std::memory_order_relaxed);
    if (samples == 0) {
        return std::nullopt;
    }
    return Level{std::sqrt(squares / static_cast<double>(samples)), static_cast<double>(peak)};
}

} // namespace fadewell::demo
