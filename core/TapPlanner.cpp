#include "core/TapPlanner.h"

#include <algorithm>
#include <utility>

namespace fadewell {
namespace {

bool isAtUnity(const TapTarget& target)
{
    return target.gain == 1.0 && target.duck == 1.0;
}

bool needsTap(const TapTarget& target)
{
    return !isAtUnity(target) || target.isRerouted;
}

// What is only lowered by call mode waits until it plays; what the user changed is made ready.
bool needsNewSession(const TapTarget& target)
{
    return needsTap(target) && (target.isPlaying || target.gain != 1.0 || target.isRerouted);
}

bool isReleased(const TapTarget& target, const TapSessionState& session, double now)
{
    if (needsTap(target)) {
        return false;
    }
    return session.outputDeviceUID != target.outputDeviceUID ||
           (session.unitySince && now - *session.unitySince >= TapPlanner::unityGrace);
}

void appendChanges(const TapTarget& target,
                   const TapSessionState& session,
                   std::vector<TapAction>& actions)
{
    const auto& id = target.appID;
    if (session.outputDeviceUID != target.outputDeviceUID) {
        actions.emplace_back(tap_action::SetOutput{id, target.outputDeviceUID});
    }
    if (session.gain != target.gain) {
        actions.emplace_back(tap_action::SetGain{id, target.gain});
    }
    if (session.duck != target.duck) {
        actions.emplace_back(tap_action::SetDuck{id, target.duck});
    }
    if (session.processObjectIDs != target.processObjectIDs) {
        actions.emplace_back(tap_action::SetProcesses{id, target.processObjectIDs});
    }
    if (session.isRunning && !target.isPlaying) {
        actions.emplace_back(tap_action::Stop{id});
    } else if (!session.isRunning && target.isPlaying) {
        actions.emplace_back(tap_action::Start{id});
    }
}

void appendDestroysOfUnwanted(std::span<const TapTarget> targets,
                              const TapPlanner::Sessions& sessions,
                              std::vector<TapAction>& actions)
{
    std::set<std::string> wanted;
    for (const auto& target : targets) {
        wanted.insert(target.appID);
    }
    for (const auto& [id, session] : sessions) {
        if (!wanted.contains(id)) {
            actions.emplace_back(tap_action::Destroy{id});
        }
    }
}

} // namespace

std::vector<TapAction> TapPlanner::plan(std::span<const TapTarget> targets,
                                        const Sessions& sessions,
                                        const std::set<std::string>& excluded,
                                        double now)
{
    std::vector<TapAction> actions;
    appendDestroysOfUnwanted(targets, sessions, actions);
    for (const auto& target : targets) {
        const auto session = sessions.find(target.appID);
        if (session == sessions.end()) {
            if (needsNewSession(target) && !excluded.contains(target.appID)) {
                actions.emplace_back(tap_action::Create{target});
            }
        } else if (isReleased(target, session->second, now)) {
            actions.emplace_back(tap_action::Destroy{target.appID});
        } else {
            appendChanges(target, session->second, actions);
        }
    }
    return actions;
}

std::optional<double> TapPlanner::nextUnityDeadline(const Sessions& sessions)
{
    std::optional<double> next;
    for (const auto& [id, session] : sessions) {
        if (session.gain == 1.0 && session.duck == 1.0 && session.unitySince) {
            const double deadline = *session.unitySince + unityGrace;
            next = std::min(next.value_or(deadline), deadline);
        }
    }
    return next;
}

} // namespace fadewell
