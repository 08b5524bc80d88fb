#include "tests/integration/support/Recorder.h"

#include "tests/integration/support/Await.h"
#include "tests/integration/support/ChildProcess.h"

#include <pipewire/filter.h>
#include <pipewire/pipewire.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <stdexcept>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;

constexpr auto capacity = static_cast<std::size_t>(120 * sampleRate);
constexpr std::size_t mostGaps = 65'536;
constexpr double tolerance = 0.02;

} // namespace

class Recorder::Capture {
public:
    Capture(const std::string& node, const char* ports);
    ~Capture();

    [[nodiscard]] std::size_t written() const { return written_.load(std::memory_order_acquire); }
    [[nodiscard]] std::size_t gaps() const { return gapCount_; }
    [[nodiscard]] Sound copy(std::size_t first, std::size_t count) const;

private:
    Capture() = default;
    static void onProcess(void* data, spa_io_position* position);
    void* addPort(const char* name);
    void store(const spa_io_position& position);
    void link(const std::string& ports, const std::string& name) const;

    std::vector<float> left_ = std::vector<float>(capacity);
    std::vector<float> right_ = std::vector<float>(capacity);
    std::atomic<std::size_t> written_ = 0;
    // Where the output's clock jumped, in recorded frames; written before `written_` passes them.
    std::vector<std::size_t> gaps_ = std::vector<std::size_t>(mostGaps);
    std::atomic<std::size_t> gapCount_ = 0;
    std::uint64_t nextPosition_ = 0;

    pw_thread_loop* loop_ = nullptr;
    pw_context* context_ = nullptr;
    pw_core* core_ = nullptr;
    pw_filter* filter_ = nullptr;
    spa_hook listener_{};
    void* leftPort_ = nullptr;
    void* rightPort_ = nullptr;
    pw_filter_events events_{};
};

Recorder::Capture::Capture(const std::string& node, const char* ports)
    : Capture() // From here on a failure runs the destructor, which ends the threads.
{
    pw_init(nullptr, nullptr);
    static std::atomic<int> count = 0;
    const std::string name = "recorder-" + std::to_string(++count) + "-" + node;
    loop_ = pw_thread_loop_new("recorder", nullptr);
    events_.version = PW_VERSION_FILTER_EVENTS;
    events_.process = &Capture::onProcess;
    // The configuration that gives its thread priority: a busy machine must not cut the recording.
    context_ = pw_context_new(pw_thread_loop_get_loop(loop_),
                              pw_properties_new(PW_KEY_CONFIG_NAME, "client-rt.conf", nullptr),
                              0);
    core_ = pw_context_connect(context_, nullptr, 0);
    if (!core_) {
        throw std::runtime_error("no sound server");
    }
    filter_ = pw_filter_new(core_,
                            name.c_str(),
                            pw_properties_new(PW_KEY_MEDIA_TYPE,
                                              "Audio",
                                              PW_KEY_MEDIA_CATEGORY,
                                              "Filter",
                                              PW_KEY_MEDIA_ROLE,
                                              "DSP",
                                              PW_KEY_NODE_NAME,
                                              name.c_str(),
                                              nullptr));
    pw_filter_add_listener(filter_, &listener_, &events_, this);
    leftPort_ = addPort("in_FL");
    rightPort_ = addPort("in_FR");
    if (pw_filter_connect(filter_, PW_FILTER_FLAG_RT_PROCESS, nullptr, 0) < 0 ||
        pw_thread_loop_start(loop_) != 0)
    {
        throw std::runtime_error("can't record " + node);
    }
    link(node + ports, name);
    if (!await([this] { return written() > 0; })) {
        throw std::runtime_error("nothing to record on " + node);
    }
}

Recorder::Capture::~Capture()
{
    pw_thread_loop_stop(loop_);
    if (filter_) {
        pw_filter_destroy(filter_);
    }
    if (core_) {
        pw_core_disconnect(core_);
    }
    pw_context_destroy(context_);
    pw_thread_loop_destroy(loop_);
}

void* Recorder::Capture::addPort(const char* name)
{
    return pw_filter_add_port(
        filter_,
        PW_DIRECTION_INPUT,
        PW_FILTER_PORT_FLAG_MAP_BUFFERS,
        0,
        pw_properties_new(
            PW_KEY_FORMAT_DSP, "32 bit float mono audio", PW_KEY_PORT_NAME, name, nullptr),
        nullptr,
        0);
}

void Recorder::Capture::link(const std::string& ports, const std::string& name) const
{
    for (const std::string channel : {"FL", "FR"}) {
        const auto connect = [&] {
            return runCommand({"pw-link", ports + channel, name + ":in_" + channel}).code == 0;
        };
        if (!await(connect)) {
            throw std::runtime_error("no ports " + ports);
        }
    }
}

void Recorder::Capture::onProcess(void* data, spa_io_position* position)
{
    static_cast<Capture*>(data)->store(*position);
}

void Recorder::Capture::store(const spa_io_position& position)
{
    const auto count = static_cast<std::uint32_t>(position.clock.duration);
    const auto* left = static_cast<const float*>(pw_filter_get_dsp_buffer(leftPort_, count));
    const auto* right = static_cast<const float*>(pw_filter_get_dsp_buffer(rightPort_, count));
    const std::size_t at = written_.load(std::memory_order_relaxed);
    if (at + count > capacity || !left || !right) {
        return;
    }
    if (at > 0 && position.clock.position != nextPosition_ && gapCount_ < mostGaps) {
        gaps_[gapCount_++] = at;
    }
    nextPosition_ = position.clock.position + count;
    std::copy_n(left, count, left_.data() + at);
    std::copy_n(right, count, right_.data() + at);
    written_.store(at + count, std::memory_order_release);
}

Sound Recorder::Capture::copy(std::size_t first, std::size_t count) const
{
    const auto begin = static_cast<std::ptrdiff_t>(first);
    const auto end = static_cast<std::ptrdiff_t>(first + count);
    Sound sound{{left_.begin() + begin, left_.begin() + end},
                {right_.begin() + begin, right_.begin() + end}};
    sound.isComplete = std::none_of(gaps_.begin(), gaps_.end(), [&](std::size_t gap) {
        return gap > first && gap < first + count;
    });
    return sound;
}

Recorder::Recorder(const std::string& node, Source source)
    : capture_(std::make_unique<Capture>(node, source == Source::output ? ":monitor_" : ":output_"))
{}

Recorder::~Recorder() = default;

std::size_t Recorder::now() const
{
    return capture_->written();
}

std::size_t Recorder::gaps() const
{
    return capture_->gaps();
}

Sound Recorder::read(std::size_t first, std::size_t count) const
{
    const auto longest = std::chrono::milliseconds(count / 48) + 10s;
    if (first + count > capacity || !await([&] { return now() >= first + count; }, longest)) {
        throw std::runtime_error("the recording ended");
    }
    return capture_->copy(first, count);
}

Sound Recorder::readUntilNow(std::size_t first) const
{
    return capture_->copy(first, now() - first);
}

Sound Recorder::latest() const
{
    const auto count = std::min(frames(100ms), now());
    return capture_->copy(now() - count, count);
}

bool Recorder::awaitGain(double gain, std::chrono::milliseconds deadline) const
{
    // In two halves: a ramp that passes through the level is not there yet.
    return await(
        [&] {
            const auto sound = latest();
            const auto half = sound.frames() / 2;
            return std::abs(toneGain(sound.part(0, half)) - gain) < tolerance &&
                   std::abs(toneGain(sound.part(half, half)) - gain) < tolerance;
        },
        deadline);
}

bool Recorder::awaitSilence(std::chrono::milliseconds deadline) const
{
    return await([&] { return latest().isDigitalSilence(); }, deadline);
}

} // namespace fadewell::integration
