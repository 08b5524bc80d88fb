#include "tests/integration/client/Client.h"

#include <pipewire/pipewire.h>
#include <spa/param/audio/format-utils.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>

namespace fadewell::integration {
namespace {

constexpr int silentCyclesAtTheEnd = 3;
constexpr std::uint32_t bytesPerFrame = 2 * sizeof(float);

/// Lives on the main loop, apart from `onProcess` and what only it touches.
class NativeClient {
public:
    explicit NativeClient(const Playing& playing)
        : playing_(playing)
        , streamsLeft_(playing.streams)
        , isPaused_(playing.mode == Playing::Mode::capture)
    {}

    int run()
    {
        loop_ = pw_main_loop_new(nullptr);
        auto* loop = pw_main_loop_get_loop(loop_);
        context_ = pw_context_new(
            loop, pw_properties_new(PW_KEY_CONFIG_NAME, "client-rt.conf", nullptr), 0);
        core_ = pw_context_connect(context_, nullptr, 0);
        if (!core_) {
            return 1;
        }
        events_.version = PW_VERSION_STREAM_EVENTS;
        events_.process = call<&NativeClient::process>;
        events_.state_changed =
            [](void* data, pw_stream_state, pw_stream_state state, const char*) {
                static_cast<NativeClient*>(data)->stateChanged(state);
            };
        events_.io_changed = [](void* data, std::uint32_t id, void* area, std::uint32_t) {
            if (id == SPA_IO_Position) {
                static_cast<NativeClient*>(data)->position_ = static_cast<spa_io_position*>(area);
            }
        };
        end_ = pw_loop_add_event(loop, call<&NativeClient::end>, this);
        timer_ = pw_loop_add_timer(loop, call<&NativeClient::begin>, this);
        pw_loop_add_signal(loop, SIGUSR1, call<&NativeClient::toggle>, this);
        begin();
        pw_main_loop_run(loop_);
        pw_core_disconnect(core_);
        pw_context_destroy(context_);
        pw_main_loop_destroy(loop_);
        return 0;
    }

private:
    template <auto method, class... Ignored>
    static void call(void* data, Ignored...)
    {
        (static_cast<NativeClient*>(data)->*method)();
    }

    void begin()
    {
        at_ = 0;
        silentCycles_ = 0;
        const bool listens = playing_.mode == Playing::Mode::capture;
        const char* category = listens ? "Capture" : "Playback";
        stream_ = pw_stream_new(
            core_,
            program_invocation_short_name, // the session manager remembers targets by it
            pw_properties_new(
                PW_KEY_MEDIA_TYPE, "Audio", PW_KEY_MEDIA_CATEGORY, category, nullptr));
        pw_stream_add_listener(stream_, &listener_, &events_, this);
        std::array<std::uint8_t, 512> memory{};
        spa_pod_builder builder = SPA_POD_BUILDER_INIT(memory.data(), memory.size());
        spa_audio_info_raw info{};
        info.format = SPA_AUDIO_FORMAT_F32;
        info.rate = 48000;
        info.channels = 2;
        info.position[0] = SPA_AUDIO_CHANNEL_FL;
        info.position[1] = SPA_AUDIO_CHANNEL_FR;
        const spa_pod* format = spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &info);
        const auto flags = static_cast<pw_stream_flags>(
            PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_RT_PROCESS |
            (isPaused_ ? PW_STREAM_FLAG_INACTIVE : 0));
        const auto direction = listens ? PW_DIRECTION_INPUT : PW_DIRECTION_OUTPUT;
        pw_stream_connect(stream_, direction, PW_ID_ANY, flags, &format, 1);
    }

    void stateChanged(pw_stream_state state)
    {
        const auto last = streamsLeft_ == 1       ? PW_STREAM_STATE_STREAMING
                          : streamsLeft_ % 2 == 0 ? PW_STREAM_STATE_CONNECTING
                                                  : PW_STREAM_STATE_PAUSED;
        if (playing_.mode == Playing::Mode::churn && state >= last) {
            pw_loop_signal_event(pw_main_loop_get_loop(loop_), end_);
        }
    }

    /// On the audio thread.
    void process()
    {
        auto* buffer = pw_stream_dequeue_buffer(stream_);
        if (!buffer) {
            return;
        }
        if (playing_.mode == Playing::Mode::capture) {
            pw_stream_queue_buffer(stream_, buffer);
            return;
        }
        auto& data = buffer->buffer->datas[0];
        auto frames = data.maxsize / bytesPerFrame;
        if (buffer->requested > 0 && buffer->requested < frames) {
            frames = static_cast<std::uint32_t>(buffer->requested);
        }
        if (playing_.mode == Playing::Mode::clock && position_) {
            at_ = position_->clock.position % playing_.file.frames();
        } else if (at_ >= playing_.file.frames() && !playing_.isEndless() &&
                   ++silentCycles_ == silentCyclesAtTheEnd)
        {
            pw_loop_signal_event(pw_main_loop_get_loop(loop_), end_);
        }
        playing_.file.copy(static_cast<float*>(data.data), frames, at_, playing_.isEndless());
        data.chunk->offset = 0;
        data.chunk->stride = static_cast<std::int32_t>(bytesPerFrame);
        data.chunk->size = frames * bytesPerFrame;
        pw_stream_queue_buffer(stream_, buffer);
    }

    void end()
    {
        pw_stream_destroy(stream_);
        stream_ = nullptr;
        if (--streamsLeft_ <= 0) {
            pw_main_loop_quit(loop_);
            return;
        }
        const bool isChurn = playing_.mode == Playing::Mode::churn;
        timespec delay{0, isChurn ? 1 : pauseBetweenStreams * 1'000'000L};
        pw_loop_update_timer(pw_main_loop_get_loop(loop_), timer_, &delay, nullptr, false);
    }

    void toggle()
    {
        isPaused_ = !isPaused_;
        if (stream_) {
            pw_stream_set_active(stream_, !isPaused_);
        }
    }

    const Playing& playing_;
    int streamsLeft_;
    bool isPaused_;
    std::size_t at_ = 0;
    int silentCycles_ = 0;
    const spa_io_position* position_ = nullptr;
    pw_main_loop* loop_ = nullptr;
    pw_context* context_ = nullptr;
    pw_core* core_ = nullptr;
    pw_stream* stream_ = nullptr;
    spa_source* end_ = nullptr;
    spa_source* timer_ = nullptr;
    spa_hook listener_{};
    pw_stream_events events_{};
};

} // namespace

int playNatively(const Playing& playing)
{
    // Before PipeWire's threads exist, which would otherwise be ended by it.
    sigset_t pause;
    sigemptyset(&pause);
    sigaddset(&pause, SIGUSR1);
    pthread_sigmask(SIG_BLOCK, &pause, nullptr);
    pw_init(nullptr, nullptr);
    return NativeClient(playing).run();
}

} // namespace fadewell::integration
