#include "core/CallMode.h"

#include <algorithm>
#include <iterator>

namespace fadewell {

void CallMode::update(const std::set<std::string>& microphoneUsers, double now)
{
    std::set<std::string> active;
    std::set_intersection(configuration.callApps.begin(),
                          configuration.callApps.end(),
                          microphoneUsers.begin(),
                          microphoneUsers.end(),
                          std::inserter(active, active.end()));
    if (active.empty()) {
        becomeIdle(now);
    } else {
        becomeBusy(std::move(active), now);
    }
}

void CallMode::becomeIdle(double now)
{
    candidateSince.reset();
    if (!isCallDetected) {
        return;
    }
    idleSince = idleSince.value_or(now);
    if (now - *idleSince >= configuration.endDelay) {
        isCallDetected = false;
        callAppIDs.clear();
        idleSince.reset();
        manualOverride.reset();
    }
}

void CallMode::becomeBusy(std::set<std::string> active, double now)
{
    idleSince.reset();
    if (isCallDetected) {
        callAppIDs.merge(active);
        return;
    }
    candidateSince = candidateSince.value_or(now);
    if (now - *candidateSince >= configuration.startDelay) {
        isCallDetected = true;
        callAppIDs = std::move(active);
        candidateSince.reset();
        manualOverride.reset();
    }
}

bool CallMode::isActive() const
{
    return manualOverride.value_or(configuration.isAutomatic && isCallDetected);
}

std::optional<double> CallMode::nextDeadline() const
{
    if (candidateSince) {
        return *candidateSince + configuration.startDelay;
    }
    if (isCallDetected && idleSince) {
        return *idleSince + configuration.endDelay;
    }
    return std::nullopt;
}

} // namespace fadewell
