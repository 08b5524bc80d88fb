#pragma once

#include "audio/CoreAudioError.h"
#include "audio/EngineContext.h"
#include "audio/TapEvent.h"
#include "audio/TapRequest.h"
#include "audio/TapSession.h"
#include "base/Logger.h"
#include "base/Stream.h"
#include "core/TapAction.h"
#include "core/TapPlanner.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace fadewell {

/// Turns the model's requests into running audio paths, and keeps them healthy.
class TapManager final : public std::enable_shared_from_this<TapManager> {
public:
    [[nodiscard]] static std::shared_ptr<TapManager> create(EngineContext context);
    ~TapManager();
    TapManager(const TapManager&) = delete;
    TapManager& operator=(const TapManager&) = delete;

    /// Changes of the capture permission; the newest 4 are kept.
    [[nodiscard]] Stream<TapEvent>& events();

    /// Takes the complete wanted list, one request per app. Asynchronous.
    void update(std::vector<TapRequest> requests);

    /// Destroys every tap, aggregate device and I/O procedure before it returns.
    void stopAll();

    /// Destroys taps and aggregates that an earlier run left behind; returns how many. For launch,
    /// before any session exists. [any thread]
    static int removeLeftovers(AudioHardware& hardware);

private:
    using Session = std::shared_ptr<TapSession>;

    explicit TapManager(EngineContext context);

    // Requests to sessions.
    void reconcile() ON_QUEUE(*queue_);
    [[nodiscard]] std::set<std::string> excludedApps(const std::vector<TapTarget>& targets,
                                                     double now) ON_QUEUE(*queue_);
    [[nodiscard]] TapPlanner::Sessions sessionStates() const ON_QUEUE(*queue_);
    void execute(const TapAction& action, double now) ON_QUEUE(*queue_);
    void carryOut(const tap_action::Create& action, double now) ON_QUEUE(*queue_);
    void carryOut(const tap_action::Destroy& action, double now) ON_QUEUE(*queue_);
    void carryOut(const tap_action::SetGain& action, double now) ON_QUEUE(*queue_);
    void carryOut(const tap_action::SetDuck& action, double now) ON_QUEUE(*queue_);
    void carryOut(const tap_action::SetProcesses& action, double now) ON_QUEUE(*queue_);
    void carryOut(const tap_action::SetOutput& action, double now) ON_QUEUE(*queue_);
    void carryOut(const tap_action::Start& action, double now) ON_QUEUE(*queue_);
    void carryOut(const tap_action::Stop& action, double now) ON_QUEUE(*queue_);
    void startSession(const Session& session) ON_QUEUE(*queue_);
    void watchSession(const Session& session) ON_QUEUE(*queue_);
    void release(const std::string& appID) ON_QUEUE(*queue_);
    void releaseAll() ON_QUEUE(*queue_);
    void scheduleDeadline() ON_QUEUE(*queue_);
    void scheduleCooldown() ON_QUEUE(*queue_);
    [[nodiscard]] Timer reconcileAt(double uptime);
    void stopOnQueue() ON_QUEUE(*queue_);
    [[nodiscard]] Session session(const std::string& appID) const ON_QUEUE(*queue_);
    [[nodiscard]] double uptime() const { return context_.clock->uptime(); }

    // Failures, permission, rebuilds, watchdog.
    void handleFailure(const std::string& appID, const CoreAudioError& error, double now)
        ON_QUEUE(*queue_);
    void checkFlow(const Session& checked) ON_QUEUE(*queue_);
    void denyPermission() ON_QUEUE(*queue_);
    void schedulePermissionRetry() ON_QUEUE(*queue_);
    void permissionRetryTick() ON_QUEUE(*queue_);
    void handleProblem(const Session& troubled) ON_QUEUE(*queue_);
    void requestRebuild(const std::string& appID, const char* reason) ON_QUEUE(*queue_);
    void performRebuild(const std::string& appID, const std::string& reason) ON_QUEUE(*queue_);
    [[nodiscard]] bool countRebuild(const std::string& appID, double now) ON_QUEUE(*queue_);
    void rebuildOutput(const Session& rebuilt, const std::string& reason, double now)
        ON_QUEUE(*queue_);
    void updateWatchdog() ON_QUEUE(*queue_);
    void watchdogTick() ON_QUEUE(*queue_);

    const EngineContext context_;
    const std::shared_ptr<SerialQueue> queue_;
    const Logger log_{"taps"};
    Stream<TapEvent> events_{4};

    // By app identifier; times are uptimes in seconds.
    std::map<std::string, Session> sessions_ CONFINED_TO(*queue_);
    std::vector<TapRequest> requests_ CONFINED_TO(*queue_);
    std::map<std::string, double> failedUntil_ CONFINED_TO(*queue_);
    std::map<std::string, double> releasedAt_ CONFINED_TO(*queue_);
    std::set<std::string> pendingRebuilds_ CONFINED_TO(*queue_);
    std::map<std::string, std::vector<double>> rebuildTimes_ CONFINED_TO(*queue_);
    std::map<std::string, std::uint64_t> lastCallbackCounts_ CONFINED_TO(*queue_);
    std::optional<double> lastTick_ CONFINED_TO(*queue_);
    bool isPermissionDenied_ CONFINED_TO(*queue_) = false;
    Timer deadline_ CONFINED_TO(*queue_);
    Timer cooldownWork_ CONFINED_TO(*queue_);
    Timer permissionRetry_ CONFINED_TO(*queue_);
    Timer watchdog_ CONFINED_TO(*queue_);
};

} // namespace fadewell
