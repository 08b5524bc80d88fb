#include "demo/LevelMeter.h"

#include <pipewire/pipewire.h>
#include <spa/param/audio/format-utils.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace fadewell::demo {

class LevelMeter::Stream {
public:
    Stream(pw_core* core, const std::string& output);
    ~Stream() { pw_stream_destroy(stream_); }
    [[nodiscard]] std::optional<Level> take();

private:
    static void onProcess(void* data) { static_cast<Stream*>(data)->measure(); }
    void measure();

    pw_stream* stream_ = nullptr;
    spa_hook listener_{};
    pw_stream_events events_{};
    double squares_ = 0;
    double peak_ = 0;
    std::size_t samples_ = 0;
};

LevelMeter::Stream::Stream(pw_core* core, const std::string& output)
{
    // Passive: an output that plays nothing may go to sleep while it is watched.
    stream_ = pw_stream_new(core,
                            "fadewell-demo-table",
                            pw_properties_new(PW_KEY_MEDIA_TYPE,
                                              "Audio",
                                              PW_KEY_MEDIA_CATEGORY,
                                              "Capture",
                                              PW_KEY_STREAM_CAPTURE_SINK,
                                              "true",
                                              PW_KEY_STREAM_MONITOR,
                                              "true",
                                              PW_KEY_TARGET_OBJECT,
                                              output.c_str(),
                                              PW_KEY_NODE_PASSIVE,
                                              "true",
                                              PW_KEY_NODE_DONT_RECONNECT,
                                              "true",
                                              nullptr));
    events_.version = PW_VERSION_STREAM_EVENTS;
    events_.process = &Stream::onProcess;
    pw_stream_add_listener(stream_, &listener_, &events_, this);

    std::array<std::uint8_t, 1024> storage{};
    spa_pod_builder builder = SPA_POD_BUILDER_INIT(storage.data(), storage.size());
    spa_audio_info_raw info{};
    info.format = SPA_AUDIO_FORMAT_F32;
    info.channels = 2;
    info.position[0] = SPA_AUDIO_CHANNEL_FL;
    info.position[1] = SPA_AUDIO_CHANNEL_FR;
    const spa_pod* format = spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &info);
    const auto flags =
        static_cast<pw_stream_flags>(PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS);
    pw_stream_connect(stream_, PW_DIRECTION_INPUT, PW_ID_ANY, flags, &format, 1);
}

void LevelMeter::Stream::measure()
{
    auto* buffer = pw_stream_dequeue_buffer(stream_);
    if (!buffer) {
        return;
    }
    const auto& data = buffer->buffer->datas[0];
    const auto offset = std::min(data.chunk->offset, data.maxsize);
    const auto count = std::min(data.chunk->size, data.maxsize - offset) / sizeof(float);
    for (std::size_t i = 0; data.data && i < count; ++i) {
        float sample = 0;
        std::memcpy(&sample,
                    static_cast<const char*>(data.data) + offset + i * sizeof(float),
                    sizeof(float));
        squares_ += double{sample} * double{sample};
        peak_ = std::max(peak_, std::abs(double{sample}));
    }
    samples_ += count;
    pw_stream_queue_buffer(stream_, buffer);
}

std::optional<LevelMeter::Level> LevelMeter::Stream::take()
{
    std::optional<Level> level;
    if (samples_ > 0 && peak_ > 0) {
        level = Level{10 * std::log10(squares_ / static_cast<double>(samples_)),
                      20 * std::log10(peak_)};
    }
    squares_ = 0;
    peak_ = 0;
    samples_ = 0;
    return level;
}

LevelMeter::LevelMeter(pw_core* core, const std::string& output)
    : stream_(std::make_unique<Stream>(core, output))
{}

LevelMeter::~LevelMeter() = default;

std::optional<LevelMeter::Level> LevelMeter::take()
{
    return stream_->take();
}

} // namespace fadewell::demo
