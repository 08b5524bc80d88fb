#pragma once

#include "audio/EngineContext.h"
#include "audio/HALListener.h"
#include "audio/render.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace fadewell {

/// The path from a tap to a real device: a private aggregate of both, with an I/O procedure that
/// renders the tapped sound. Owned by one TapSession. [the tap manager's queue]
class Output final {
public:
    struct Settings {
        std::string tapUUID;
        std::string deviceUID; ///< of the real device
        double gain = 1.0;     ///< 0 to 1
        double duck = 1.0;     ///< 0 to 1
        double sampleRate = 0; ///< Hz
    };

    /// Builds the path without starting it; may wait a second for the aggregate. Throws
    /// CoreAudioError and leaves nothing behind then.
    [[nodiscard]] static std::unique_ptr<Output> create(const EngineContext& context,
                                                        const Settings& settings);
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    /// Starts the I/O procedure unless it runs. Throws CoreAudioError.
    void start();

    /// Stops the I/O procedure if it runs; the path stays.
    void stop();

    /// Releases everything; later calls do nothing.
    void teardown();

    /// Whether the aggregate or the real device died or is no longer connected.
    [[nodiscard]] bool deviceIsGone() const;

    /// Watches liveness and sample rate of both devices, in place of earlier listeners.
    void installListeners(const std::shared_ptr<SerialQueue>& queue,
                          const std::function<void()>& onProblem);

    // Take effect at the next callback, then ramp.
    void setGain(double gain);
    void setDuck(double duck);

    [[nodiscard]] const std::string& deviceUID() const { return deviceUID_; }
    [[nodiscard]] bool isRunning() const { return isRunning_; }

    /// Whether anything but silence came through so far.
    [[nodiscard]] bool hasSignal() const;

    /// I/O callbacks so far.
    [[nodiscard]] std::uint64_t callbackCount() const;

private:
    Output(const EngineContext& context, const Settings& settings);
    void build(const Settings& settings);
    void waitForAggregateDevice() const;
    [[nodiscard]] bool hasStreams(AudioObjectPropertyScope scope) const;
    void watch(AudioObjectID device,
               const std::shared_ptr<SerialQueue>& queue,
               const std::function<void()>& onProblem);

    const std::shared_ptr<AudioHardware> hardware_;
    const std::shared_ptr<Clock> clock_;
    const std::string deviceUID_;
    bool isRunning_ = false;
    AudioObjectID aggregateID_ = kAudioObjectUnknown;
    IOProcID ioProcID_ = 0;
    /// Given to the I/O procedure, so it is freed by hand once that can't be called any more.
    RenderState* renderState_ = nullptr;
    HALListeners listeners_;
};

} // namespace fadewell
