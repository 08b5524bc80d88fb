#include "audio/TapManager.h"

#include "audio/TapTargets.h"
#include "audio/WeakTask.h"
#include "base/ProgramName.h"

#include <algorithm>
#include <utility>

namespace fadewell {
namespace {

constexpr double releaseCooldown = 1.5;
constexpr double timerSlack = 0.05;

} // namespace

std::shared_ptr<TapManager> TapManager::create(EngineContext context)
{
    return std::shared_ptr<TapManager>(new TapManager(std::move(context)));
}

TapManager::TapManager(EngineContext context)
    : context_(std::move(context))
    , queue_(context_.makeQueue("app.fadewell.taps"))
{}

TapManager::~TapManager() = default;

Stream<TapEvent>& TapManager::events()
{
    return events_;
}

void TapManager::update(std::vector<TapRequest> requests)
{
    queue_->async(weakTask(this, [requests = std::move(requests)](TapManager& manager) {
        manager.queue_->assertCurrent();
        manager.requests_ = requests;
        manager.reconcile();
    }));
}

void TapManager::stopAll()
{
    queue_->sync([this] {
        queue_->assertCurrent();
        stopOnQueue();
    });
}

void TapManager::stopOnQueue()
{
    deadline_.cancel();
    permissionRetry_.cancel();
    watchdog_.cancel();
    for (const auto& [appID, session] : sessions_) {
        session->teardown();
    }
    if (!sessions_.empty()) {
        log_.notice("Stopped {} sessions", sessions_.size());
    }
    sessions_.clear();
    requests_.clear();
}

void TapManager::reconcile()
{
    const double now = uptime();
    const auto targets = makeTapTargets(*context_.hardware, requests_);
    if (!targets) {
        releaseAll();
        return;
    }
    const auto excluded = excludedApps(*targets, now);
    for (const auto& action : TapPlanner::plan(*targets, sessionStates(), excluded, now)) {
        execute(action, now);
    }
    scheduleDeadline();
    scheduleCooldown();
    updateWatchdog();
}

std::set<std::string> TapManager::excludedApps(const std::vector<TapTarget>& targets, double now)
{
    std::erase_if(failedUntil_, [now](const auto& entry) { return entry.second <= now; });
    std::erase_if(releasedAt_,
                  [now](const auto& entry) { return now - entry.second >= releaseCooldown; });
    std::set<std::string> excluded;
    if (isPermissionDenied_) {
        for (const auto& target : targets) {
            excluded.insert(target.appID);
        }
        return excluded;
    }
    for (const auto* apps : {&failedUntil_, &releasedAt_}) {
        for (const auto& [appID, time] : *apps) {
            excluded.insert(appID);
        }
    }
    return excluded;
}

TapPlanner::Sessions TapManager::sessionStates() const
{
    TapPlanner::Sessions states;
    for (const auto& [appID, session] : sessions_) {
        const Output* output = session->output();
        states[appID] = {session->processObjectIDs(),
                         output ? output->deviceUID() : std::string(),
                         session->gain(),
                         session->duck(),
                         session->isRunning(),
                         session->unitySince()};
    }
    return states;
}

void TapManager::execute(const TapAction& action, double now)
{
    std::visit(
        [this, now](const auto& step) {
            queue_->assertCurrent();
            carryOut(step, now);
        },
        action);
}

void TapManager::carryOut(const tap_action::Create& action, double now)
{
    const TapTarget& target = action.target;
    const double began = uptime();
    try {
        const auto session = TapSession::create(
            context_, target.appID, target.processObjectIDs, target.outputDeviceUID, target.gain);
        sessions_[target.appID] = session;
        watchSession(session);
        if (target.isPlaying) {
            startSession(session);
        }
        // Only now, so that a lowered app fades down from its full level.
        session->setDuck(target.duck);
    } catch (const CoreAudioError& error) {
        handleFailure(target.appID, error, now);
        return;
    }
    log_.info("Tapping {} on {} ({} ms)",
              ProgramName{target.appID},
              target.outputDeviceUID,
              static_cast<long>((uptime() - began) * 1000));
}

void TapManager::carryOut(const tap_action::Destroy& action, double /*now*/)
{
    release(action.appID);
    log_.info("Released {}", ProgramName{action.appID});
}

void TapManager::carryOut(const tap_action::SetGain& action, double now)
{
    if (const auto changed = session(action.appID)) {
        changed->setGain(action.gain);
        changed->updateUnity(now);
    }
}

void TapManager::carryOut(const tap_action::SetDuck& action, double now)
{
    if (const auto changed = session(action.appID)) {
        changed->setDuck(action.duck);
        changed->updateUnity(now);
        log_.info("{} {}",
                  ProgramName{action.appID},
                  action.duck < 1.0 ? "lowered for call mode" : "back from call mode");
    }
}

void TapManager::carryOut(const tap_action::SetProcesses& action, double now)
{
    try {
        if (const auto changed = session(action.appID)) {
            changed->setProcesses(action.processObjectIDs);
        }
    } catch (const CoreAudioError& error) {
        handleFailure(action.appID, error, now);
    }
}

void TapManager::carryOut(const tap_action::SetOutput& action, double now)
{
    try {
        if (const auto moved = session(action.appID)) {
            moved->moveOutput(action.deviceUID);
        }
    } catch (const CoreAudioError& error) {
        handleFailure(action.appID, error, now);
        return;
    }
    log_.info("Moved {} to {}", ProgramName{action.appID}, action.deviceUID);
}

void TapManager::carryOut(const tap_action::Start& action, double now)
{
    const auto resumed = session(action.appID);
    if (!resumed) {
        return;
    }
    try {
        startSession(resumed);
    } catch (const CoreAudioError& error) {
        handleFailure(action.appID, error, now);
        return;
    }
    log_.info("Resumed {}", ProgramName{action.appID});
}

void TapManager::carryOut(const tap_action::Stop& action, double /*now*/)
{
    const auto paused = session(action.appID);
    if (paused && paused->output()) {
        paused->output()->stop();
    }
    lastCallbackCounts_.erase(action.appID);
    log_.info("Paused {}", ProgramName{action.appID});
}

void TapManager::watchSession(const Session& session)
{
    // The session holds this callback, so the callback must not hold the session.
    session->monitor(queue_, weakTask(this, [weak = std::weak_ptr(session)](TapManager& manager) {
                         manager.queue_->assertCurrent();
                         if (const auto troubled = weak.lock()) {
                             manager.handleProblem(troubled);
                         }
                     }));
}

void TapManager::release(const std::string& appID)
{
    const auto found = sessions_.find(appID);
    if (found == sessions_.end()) {
        return;
    }
    const Session released = found->second;
    sessions_.erase(found);
    released->teardown();
    lastCallbackCounts_.erase(appID);
    releasedAt_[appID] = uptime();
}

void TapManager::releaseAll()
{
    while (!sessions_.empty()) {
        release(std::string(sessions_.begin()->first));
    }
}

void TapManager::scheduleDeadline()
{
    deadline_.cancel();
    if (const auto next = TapPlanner::nextUnityDeadline(sessionStates())) {
        deadline_ = reconcileAt(*next);
    }
}

void TapManager::scheduleCooldown()
{
    cooldownWork_.cancel();
    const auto earliest = std::min_element(
        releasedAt_.begin(), releasedAt_.end(), [](const auto& left, const auto& right) {
            return left.second < right.second;
        });
    if (earliest != releasedAt_.end()) {
        cooldownWork_ = reconcileAt(earliest->second + releaseCooldown);
    }
}

Timer TapManager::reconcileAt(double uptime)
{
    const double delay = std::max(uptime - this->uptime(), 0.0) + timerSlack;
    return queue_->after(delay, weakTask(this, [](TapManager& manager) {
                             manager.queue_->assertCurrent();
                             manager.reconcile();
                         }));
}

TapManager::Session TapManager::session(const std::string& appID) const
{
    const auto found = sessions_.find(appID);
    return found == sessions_.end() ? nullptr : found->second;
}

} // namespace fadewell
