// What keeps the paths of a TapManager healthy: failures, permission, rebuilds and the watchdog.

#include "audio/AudioPermission.h"
#include "audio/TapManager.h"
#include "audio/WeakTask.h"
#include "base/ProgramName.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace fadewell {
namespace {

constexpr double failureExclusion = 10.0;
constexpr double flowCheckDelay = 2.0;
constexpr double permissionInterval = 3.0;
constexpr double rebuildDebounce = 0.25;
constexpr double rebuildWindow = 10.0;
constexpr std::size_t rebuildLimit = 3;
constexpr double watchdogInterval = 2.0;
constexpr double watchdogLeeway = 0.25;

constexpr const char* deviceWentAway = "output device went away";
constexpr const char* audioStalled = "audio stalled";

} // namespace

void TapManager::handleFailure(const std::string& appID, const CoreAudioError& error, double now)
{
    log_.error("{}: {}", ProgramName{appID}, error.description());
    release(appID);
    failedUntil_[appID] = now + failureExclusion;
}

void TapManager::startSession(const Session& session)
{
    session->start();
    queue_
        ->after(flowCheckDelay,
                weakTask(this,
                         [weak = std::weak_ptr(session)](TapManager& manager) {
                             manager.queue_->assertCurrent();
                             if (const auto checked = weak.lock()) {
                                 manager.checkFlow(checked);
                             }
                         }))
        .detach();
}

void TapManager::checkFlow(const Session& checked)
{
    if (session(checked->appID()) != checked || !checked->isRunning()) {
        return;
    }
    if (checked->output()->hasSignal()) {
        log_.info("{}: audio is flowing", ProgramName{checked->appID()});
    } else if (checked->writeDescription() == kAudioDevicePermissionsError) {
        denyPermission();
    }
}

void TapManager::denyPermission()
{
    log_.notice("No permission to capture audio; releasing all apps");
    isPermissionDenied_ = true;
    releaseAll();
    events_.send(TapEvent::permissionDenied);
    schedulePermissionRetry();
}

void TapManager::schedulePermissionRetry()
{
    permissionRetry_ = queue_->after(permissionInterval, weakTask(this, [](TapManager& manager) {
                                         manager.queue_->assertCurrent();
                                         manager.permissionRetryTick();
                                     }));
}

void TapManager::permissionRetryTick()
{
    if (!isPermissionDenied_) {
        return;
    }
    if (!AudioPermission::check(*context_.hardware)) {
        schedulePermissionRetry();
        return;
    }
    log_.notice("Audio capture permission granted");
    isPermissionDenied_ = false;
    events_.send(TapEvent::permissionGranted);
    reconcile();
}

void TapManager::handleProblem(const Session& troubled)
{
    if (session(troubled->appID()) != troubled) {
        return;
    }
    if (!troubled->output() || troubled->output()->deviceIsGone()) {
        requestRebuild(troubled->appID(), deviceWentAway);
    }
}

void TapManager::requestRebuild(const std::string& appID, const char* reason)
{
    if (!pendingRebuilds_.insert(appID).second) {
        return;
    }
    // Holds the manager: a path that is known to be broken is repaired, whoever lets go of us.
    queue_
        ->after(rebuildDebounce,
                [self = shared_from_this(), appID, reason] {
                    self->queue_->assertCurrent();
                    self->performRebuild(appID, reason);
                })
        .detach();
}

void TapManager::performRebuild(const std::string& appID, const std::string& reason)
{
    pendingRebuilds_.erase(appID);
    const Session broken = session(appID);
    if (!broken) {
        return;
    }
    const double now = uptime();
    if (!countRebuild(appID, now)) {
        handleFailure(
            appID, CoreAudioError("Too many rebuilds", kAudioHardwareUnspecifiedError), now);
        reconcile();
        return;
    }
    log_.notice("Rebuilding {}: {}", ProgramName{appID}, reason);
    lastCallbackCounts_.erase(appID);
    reconcile(); // May move the app to another device already, or release it.
    if (session(appID) == broken) {
        rebuildOutput(broken, reason, now);
    }
}

bool TapManager::countRebuild(const std::string& appID, double now)
{
    auto& times = rebuildTimes_[appID];
    std::erase_if(times, [now](double time) { return now - time >= rebuildWindow; });
    times.push_back(now);
    return times.size() <= rebuildLimit;
}

void TapManager::rebuildOutput(const Session& rebuilt, const std::string& reason, double now)
{
    const Output* output = rebuilt->output();
    if (output && !output->deviceIsGone() && reason != audioStalled) {
        return;
    }
    try {
        rebuilt->moveOutput(output ? output->deviceUID() : std::string());
    } catch (const CoreAudioError& error) {
        handleFailure(rebuilt->appID(), error, now);
    }
}

void TapManager::updateWatchdog()
{
    const bool isAnyRunning =
        std::any_of(sessions_.begin(), sessions_.end(), [](const auto& entry) {
            return entry.second->isRunning();
        });
    if (!isAnyRunning) {
        watchdog_.cancel();
        lastCallbackCounts_.clear();
    } else if (!watchdog_) {
        lastTick_.reset();
        watchdog_ = queue_->every(watchdogInterval,
                                  watchdogInterval,
                                  watchdogLeeway,
                                  weakTask(this, [](TapManager& manager) {
                                      manager.queue_->assertCurrent();
                                      manager.watchdogTick();
                                  }));
    }
}

void TapManager::watchdogTick()
{
    // A blocked queue makes one tick late and the next one early: too early to judge anything.
    const double now = uptime();
    if (lastTick_ && now - *lastTick_ < watchdogInterval - watchdogLeeway) {
        return;
    }
    lastTick_ = now;
    for (const auto& [appID, session] : sessions_) {
        if (!session->isRunning()) {
            continue;
        }
        const std::uint64_t count = session->output()->callbackCount();
        const auto last = lastCallbackCounts_.find(appID);
        if (last != lastCallbackCounts_.end() && last->second == count) {
            requestRebuild(appID, audioStalled);
        }
        lastCallbackCounts_[appID] = count;
    }
}

} // namespace fadewell
