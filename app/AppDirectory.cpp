#include "app/AppDirectory.h"

#include <algorithm>
#include <utility>

namespace fadewell {
namespace {

std::optional<RunningApplication> runningApplication(Workspace& workspace,
                                                     const std::vector<std::int32_t>& pids)
{
    if (pids.empty()) {
        return std::nullopt;
    }
    const auto running = workspace.runningApplications();
    for (const auto pid : pids) {
        const auto found = std::find_if(
            running.begin(), running.end(), [pid](const auto& each) { return each.pid == pid; });
        if (found != running.end()) {
            return *found;
        }
    }
    return std::nullopt;
}

std::optional<AppLocation> locate(Workspace& workspace,
                                  const std::optional<RunningApplication>& running,
                                  const std::optional<std::string>& bundleID)
{
    if (running && running->location) {
        return workspace.describe(*running->location);
    }
    return bundleID ? workspace.location(*bundleID) : std::nullopt;
}

} // namespace

AppDirectory::AppDirectory(std::shared_ptr<Workspace> workspace)
    : workspace_(std::move(workspace))
{}

AppDirectory::Identity AppDirectory::identity(const AudioApp& app)
{
    const auto found = cache_.find(app.id);
    return found != cache_.end() ? found->second
                                 : cache_.emplace(app.id, lookUp(app)).first->second;
}

AppDirectory::Identity AppDirectory::lookUp(const AudioApp& app) const
{
    Identity identity{app.bundleID.value_or("Unknown App"), AppIcon::generic()};
    const auto running = runningApplication(*workspace_, app.pids);
    if (const auto location = locate(*workspace_, running, app.bundleID)) {
        identity = {location->displayName, location->icon};
    }
    if (running) {
        identity.name = running->name.value_or(identity.name);
        identity.icon = running->icon.value_or(identity.icon);
    }
    return identity;
}

} // namespace fadewell
