#pragma once

#include "platform/linux/pipewire/Connection.h"
#include "platform/linux/pipewire/taps/TapRender.h"

#include <pipewire/pipewire.h>
#include <spa/node/io.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace fadewell::pipewire {

/// The two streams of one tap: `cap` takes the apps' sound in, `out` plays what the I/O procedure
/// made of it, within the same cycle of the same driver. A tap that only listens has `out` alone.
///
/// Everything but the audio callbacks is called with the connection's lock held.
class TapStreams final {
public:
    struct Options {
        std::string name;   ///< node.name of `cap`, unique in the session
        std::string title;  ///< shown to people by tools that list nodes
        std::string target; ///< node.name of the output to play on; empty follows the default
        bool listensOnly = false;
        double sampleRate = 48000.0; ///< until the graph has told its own, in Hz
    };

    /// `changed` is called on the loop thread when readiness or the sample rate changed. Null when
    /// the server refused the streams.
    [[nodiscard]] static std::unique_ptr<TapStreams>
    create(Connection& connection, const Options& options, std::function<void()> changed);
    ~TapStreams();
    TapStreams(const TapStreams&) = delete;
    TapStreams& operator=(const TapStreams&) = delete;

    /// Replaces what create() was given.
    void onChanged(std::function<void()> changed) { changed_ = std::move(changed); }

    /// Asleep, streams that are ready cost no cycle; they wake within a millisecond or two.
    void setAsleep(bool isAsleep);

    [[nodiscard]] TapRender& render() { return render_; }
    [[nodiscard]] const std::string& name() const { return options_.name; }
    [[nodiscard]] double sampleRate() const { return sampleRate_; }

    /// Both streams can be linked.
    [[nodiscard]] bool isReady() const;
    [[nodiscard]] bool isStreaming() const;
    [[nodiscard]] bool hasFailed() const;

    [[nodiscard]] std::uint32_t captureNode() const; ///< SPA_ID_INVALID until the server named it
    [[nodiscard]] std::uint32_t outputNode() const;

    /// Cycles come, as of now.
    [[nodiscard]] bool isFlowing() const;

    /// Cycles come, and have had nothing from the apps for some time.
    [[nodiscard]] bool isStarved() const;

    /// Has whatever plays together with these streams run in cycles of so many frames; 0: as long
    /// as they are by themselves.
    void forceCycle(std::uint32_t frames);

    /// Has whatever plays together with these streams run in no longer cycles than it does now;
    /// shorter ones are possible. Without effect on streams that don't run.
    void keepCycle();
    void letCycleGo();

    /// How long until links at these streams can change without being noticed, in seconds: in the
    /// first part of a cycle, when its sound has passed and the next is far. 0 is now.
    [[nodiscard]] double untilQuietMoment() const;

    /// Returns once the audio thread has left whatever callback it was in.
    void synchronise();

    /// Lets a started procedure know, on the audio thread, that it is alive though nothing flows.
    void heartbeat();

private:
    /// One stream with what its callbacks need.
    struct Side {
        TapStreams* owner = nullptr;
        pw_stream* stream = nullptr;
        spa_hook hook = {};
        pw_stream_state state = PW_STREAM_STATE_UNCONNECTED;
    };

    TapStreams(Connection& connection, const Options& options, std::function<void()> changed);
    bool connect();
    bool connectOutput();
    bool connectCapture();
    [[nodiscard]] AudioTimeStamp timeStamp() const;
    void noteCycle();
    void setState(Side& side, pw_stream_state state);
    void formatChanged(const spa_pod* format);
    void limitCycle(double frames);
    void setProperty(const char* key, const std::string& value);
    void keepFullVolume(Side& side, const spa_pod* props);

    static void
    onStateChanged(void* data, pw_stream_state old, pw_stream_state state, const char* error);
    static void onParamChanged(void* data, std::uint32_t id, const spa_pod* param);
    static void onIOChanged(void* data, std::uint32_t id, void* area, std::uint32_t size);
    static void onCaptureProcess(void* data);
    static void onOutputProcess(void* data);
    static void onListenProcess(void* data);

    Connection& connection_;
    Options options_;
    std::function<void()> changed_;
    double sampleRate_;
    TapRender render_;
    Side capture_;
    Side output_;
    std::uint64_t keptCycle_ = 0; ///< in ns; 0 for none

    std::atomic<bool> isEnding_{false};
    std::atomic<std::uint64_t> cycleBegan_{0};  ///< of the last cycle, in ns of the monotonic clock
    std::atomic<std::uint64_t> cycleLength_{0}; ///< in ns
    std::atomic<std::uint32_t> emptyCycles_{0}; ///< in a row, at `cap`

    // Audio thread only, but for its setting while the stream is connected.
    spa_io_position* position_ = nullptr;
    std::uint32_t pendingFrames_ = 0;
    std::array<std::array<float, TapRender::maxFrames>, 2> scratch_{};
};

} // namespace fadewell::pipewire
