#include "tests/integration/client/Client.h"

#include <cerrno>
#include <csignal>
#include <memory>
#include <pulse/pulseaudio.h>
#include <tuple>
#include <vector>

namespace fadewell::integration {
namespace {

constexpr std::size_t bytesPerFrame = 2 * sizeof(float);

class PulseClient {
public:
    explicit PulseClient(const Playing& playing)
        : playing_(playing)
        , streamsLeft_(playing.streams)
        , isPaused_(playing.mode == Playing::Mode::capture)
    {}

    int run()
    {
        const std::unique_ptr<pa_mainloop, void (*)(pa_mainloop*)> loop(pa_mainloop_new(),
                                                                        pa_mainloop_free);
        api_ = pa_mainloop_get_api(loop.get());
        pa_signal_init(api_);
        pa_signal_new(SIGUSR1, call<&PulseClient::toggle>, this);
        context_ = pa_context_new(api_, program_invocation_short_name);
        pa_context_set_state_callback(context_, call<&PulseClient::contextChanged>, this);
        if (pa_context_connect(context_, nullptr, PA_CONTEXT_NOFLAGS, nullptr) < 0) {
            return 1;
        }
        int result = 0;
        pa_mainloop_run(loop.get(), &result);
        pa_signal_done();
        return result;
    }

private:
    /// A callback of any kind; the last argument is this object.
    template <auto method, class... Arguments>
    static void call(Arguments... arguments)
    {
        void* const data = std::get<sizeof...(arguments) - 1>(std::tuple(arguments...));
        (static_cast<PulseClient*>(data)->*method)();
    }

    void contextChanged()
    {
        const auto state = pa_context_get_state(context_);
        if (state == PA_CONTEXT_READY) {
            begin();
        } else if (!PA_CONTEXT_IS_GOOD(state)) {
            api_->quit(api_, 1);
        }
    }

    void begin()
    {
        at_ = 0;
        isDraining_ = false;
        constexpr pa_sample_spec format{PA_SAMPLE_FLOAT32LE, 48000, 2};
        stream_ = pa_stream_new(context_, program_invocation_short_name, &format, nullptr);
        pa_stream_set_state_callback(stream_, call<&PulseClient::streamChanged>, this);
        if (playing_.mode == Playing::Mode::capture) {
            pa_stream_set_read_callback(
                stream_,
                [](pa_stream* stream, std::size_t bytes, void*) {
                    const void* heard = nullptr;
                    pa_stream_peek(stream, &heard, &bytes);
                    pa_stream_drop(stream);
                },
                nullptr);
            pa_stream_connect_record(stream_, nullptr, nullptr, PA_STREAM_START_CORKED);
            return;
        }
        pa_stream_set_write_callback(stream_, call<&PulseClient::write>, this);
        pa_stream_connect_playback(
            stream_, nullptr, nullptr, PA_STREAM_ADJUST_LATENCY, nullptr, nullptr);
    }

    void streamChanged()
    {
        const auto state = pa_stream_get_state(stream_);
        if (state == PA_STREAM_FAILED) {
            api_->quit(api_, 1);
        } else if (state == PA_STREAM_TERMINATED) {
            pa_stream_unref(stream_);
            stream_ = nullptr;
            --streamsLeft_;
            timeval time{};
            pa_timeval_add(pa_gettimeofday(&time), pauseBetweenStreams * PA_USEC_PER_MSEC);
            api_->time_new(api_, &time, call<&PulseClient::goOn>, this);
        }
    }

    void goOn() { streamsLeft_ > 0 ? begin() : api_->quit(api_, 0); }

    void write()
    {
        std::size_t frames = pa_stream_writable_size(stream_) / bytesPerFrame;
        while (frames > 0 && !isDraining_) {
            const auto count =
                playing_.isEndless() ? frames : std::min(frames, playing_.file.frames() - at_);
            std::vector<float> samples(2 * count);
            playing_.file.copy(samples.data(), count, at_, playing_.isEndless());
            pa_stream_write(
                stream_, samples.data(), count * bytesPerFrame, nullptr, 0, PA_SEEK_RELATIVE);
            frames -= count;
            if (at_ == playing_.file.frames() && !playing_.isEndless()) {
                drain();
            }
        }
    }

    void drain()
    {
        isDraining_ = true;
        pa_operation_unref(pa_stream_drain(
            stream_, [](pa_stream* stream, int, void*) { pa_stream_disconnect(stream); }, nullptr));
    }

    void toggle()
    {
        isPaused_ = !isPaused_;
        if (stream_) {
            pa_operation_unref(pa_stream_cork(stream_, isPaused_ ? 1 : 0, nullptr, nullptr));
        }
    }

    const Playing& playing_;
    int streamsLeft_;
    bool isPaused_;
    bool isDraining_ = false;
    std::size_t at_ = 0;
    pa_mainloop_api* api_ = nullptr;
    pa_context* context_ = nullptr;
    pa_stream* stream_ = nullptr;
};

} // namespace

int playOverPulse(const Playing& playing)
{
    return PulseClient(playing).run();
}

} // namespace fadewell::integration
