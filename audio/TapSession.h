#pragma once

#include "audio/EngineContext.h"
#include "audio/HALListener.h"
#include "audio/Output.h"
#include "audio/TapDescription.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace fadewell {

/// The stream format of a tap; waits up to half a second for one. Throws CoreAudioError.
[[nodiscard]] AudioStreamBasicDescription
readTapFormat(AudioHardware& hardware, Clock& clock, AudioObjectID tap);

/// The audio path of one app: a tap that mutes its direct sound, and the output that plays it.
/// Logs nothing; what fails is thrown as CoreAudioError. [the tap manager's queue]
class TapSession final {
public:
    /// Builds tap and output at duck 1, without starting. Leaves nothing behind when it throws.
    [[nodiscard]] static std::shared_ptr<TapSession> create(const EngineContext& context,
                                                            const std::string& appID,
                                                            std::vector<AudioObjectID> processes,
                                                            const std::string& deviceUID,
                                                            double gain);
    ~TapSession();
    TapSession(const TapSession&) = delete;
    TapSession& operator=(const TapSession&) = delete;

    /// Starts the output unless it runs.
    void start();

    /// Makes the tap cover other processes; on failure they stay as they were.
    void setProcesses(std::vector<AudioObjectID> processes);

    /// Builds a new output on the device, starts it if the old one runs, and only then drops the
    /// old one. On failure the old one stays, running if it ran.
    void moveOutput(const std::string& deviceUID);

    /// Calls `onProblem` on `queue` whenever the tap's format or a device's liveness or sample rate
    /// changed, for this and every later output.
    void monitor(std::shared_ptr<SerialQueue> queue, std::function<void()> onProblem);

    /// Releases everything; later calls do nothing.
    void teardown();

    void setGain(double gain);
    void setDuck(double duck);

    /// Notes since when gain and duck are both exactly 1, given the uptime now.
    void updateUnity(double now);

    /// Writes the tap's own description back to it, which the platform refuses with '!hog' where
    /// capture is not permitted.
    OSStatus writeDescription();

    [[nodiscard]] const std::string& appID() const { return appID_; }
    [[nodiscard]] const std::vector<AudioObjectID>& processObjectIDs() const
    {
        return processObjectIDs_;
    }
    [[nodiscard]] double gain() const { return gain_; }
    [[nodiscard]] double duck() const { return duck_; }
    /// Uptime in seconds.
    [[nodiscard]] std::optional<double> unitySince() const { return unitySince_; }

    /// Null once torn down.
    [[nodiscard]] Output* output() const { return output_.get(); }
    [[nodiscard]] bool isRunning() const { return output_ && output_->isRunning(); }

private:
    /// What monitor() was last given; a new output is watched the same way.
    struct Health {
        std::shared_ptr<SerialQueue> queue;
        std::function<void()> onProblem;
    };

    TapSession(const EngineContext& context,
               const std::string& appID,
               std::vector<AudioObjectID> processes,
               double gain);
    void build(const std::string& deviceUID);
    [[nodiscard]] std::unique_ptr<Output> makeOutput(const std::string& deviceUID);

    const EngineContext context_;
    const std::string appID_;
    std::vector<AudioObjectID> processObjectIDs_;
    double gain_;
    double duck_ = 1.0;
    std::optional<double> unitySince_;
    TapDescription tapDescription_;
    AudioObjectID tapID_ = kAudioObjectUnknown;
    std::unique_ptr<Output> output_;
    std::unique_ptr<HALListener> tapListener_;
    std::optional<Health> health_;
};

} // namespace fadewell
