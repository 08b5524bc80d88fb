#include "app/UntappableApps.h"

#include "core/AppGrouper.h"
#include "core/RunningApp.h"

#include <cstdint>
#include <map>
#include <utility>

namespace fadewell {

UntappableApps::UntappableApps(std::shared_ptr<Workspace> workspace,
                               std::shared_ptr<Tappability> tappability)
    : workspace_(std::move(workspace))
    , tappability_(std::move(tappability))
    , directory_(workspace_)
{}

std::vector<UntappableApp> UntappableApps::list()
{
    const auto found = tappability_ ? tappability_->untappable() : std::vector<UntappableProcess>();
    if (found.empty()) {
        return {};
    }
    std::vector<AudioProcess> processes;
    std::map<std::uint32_t, UntappableReason> reasons;
    for (const auto& [process, reason] : found) {
        processes.push_back(process);
        reasons.emplace(process.id, reason);
    }
    std::vector<RunningApp> running;
    for (const auto& application : workspace_->runningApplications()) {
        running.push_back({application.pid, application.bundleID, false});
    }
    std::vector<UntappableApp> apps;
    for (auto& app : AppGrouper::group(
             processes, running, AppGrouper::ignoredBundleIDs(), {workspace_->ownPID()}))
    {
        auto identity = directory_.identity(app);
        const auto reason = reasons.at(app.processObjectIDs.front());
        apps.push_back({std::move(app), std::move(identity), reason});
    }
    return apps;
}

} // namespace fadewell
