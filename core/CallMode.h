#pragma once

#include <optional>
#include <set>
#include <string>
#include <utility>

namespace fadewell {

/// Detects calls from microphone use, and decides whether other apps are lowered. Time is passed
/// in, in seconds of a monotonic clock.
class CallMode final {
public:
    struct Configuration {
        std::set<std::string> callApps; ///< whose microphone use counts as a call
        bool isAutomatic = true;        ///< a detected call turns call mode on by itself
        double startDelay = 1.0;        ///< seconds of use until a call is detected
        double endDelay = 5.0;          ///< seconds without use until the call ends

        bool operator==(const Configuration&) const = default;
    };

    explicit CallMode(Configuration initial)
        : configuration(std::move(initial))
    {}

    /// `microphoneUsers`: every app that captures now, call app or not. To be called again at
    /// `nextDeadline()` even when nothing changed. Each detected start and end clears the override.
    void update(const std::set<std::string>& microphoneUsers, double now);

    /// Whether call mode is in force.
    [[nodiscard]] bool isActive() const;

    /// When the next timed transition is due.
    [[nodiscard]] std::optional<double> nextDeadline() const;

    bool operator==(const CallMode&) const = default;

    Configuration configuration;
    bool isCallDetected = false;
    std::set<std::string> callAppIDs;     ///< the call apps taking part in the current call
    std::optional<bool> manualOverride;   ///< the user's choice; absent: follow detection
    std::optional<double> candidateSince; ///< use seen since, no call detected yet
    std::optional<double> idleSince;      ///< no use since, during a call

private:
    void becomeIdle(double now);
    void becomeBusy(std::set<std::string> active, double now);
};

} // namespace fadewell
