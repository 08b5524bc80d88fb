#include "core/AppGrouper.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace fadewell {
namespace {

// On whose behalf a system call service runs, best first. The two rows prefer opposite apps: the
// conferencing service belongs to FaceTime, the telephony service to the phone.
std::span<const std::string_view> callServiceOwners(std::string_view serviceBundleID)
{
    static constexpr std::string_view conferencing[] = {"com.apple.FaceTime",
                                                        "com.apple.mobilephone"};
    static constexpr std::string_view telephony[] = {"com.apple.mobilephone", "com.apple.FaceTime"};
    if (serviceBundleID == "com.apple.avconferenced") {
        return conferencing;
    }
    if (serviceBundleID == "com.apple.TelephonyUtilities") {
        return telephony;
    }
    return {};
}

// Running applications by what a process may name them with; the first of equals wins.
class Owners final {
public:
    explicit Owners(std::span<const RunningApp> runningApps)
    {
        for (const auto& app : runningApps) {
            byPID_.try_emplace(app.pid, &app);
            if (app.bundleID) {
                byBundleID_.try_emplace(*app.bundleID, &app);
            }
        }
    }

    [[nodiscard]] const RunningApp* owner(const AudioProcess& process) const
    {
        if (process.bundleID) {
            if (const auto candidates = callServiceOwners(*process.bundleID); !candidates.empty()) {
                return firstRunning(candidates);
            }
        }
        const RunningApp* found = ownerByPID(process);
        if (!found && process.bundleID) {
            found = ownerByPrefix(*process.bundleID);
        }
        return found && !found->isBackgroundOnly ? found : nullptr;
    }

private:
    [[nodiscard]] const RunningApp* withBundleID(std::string_view bundleID) const
    {
        const auto found = byBundleID_.find(bundleID);
        return found == byBundleID_.end() ? nullptr : found->second;
    }

    [[nodiscard]] const RunningApp* firstRunning(std::span<const std::string_view> bundleIDs) const
    {
        for (const auto bundleID : bundleIDs) {
            if (const auto* app = withBundleID(bundleID)) {
                return app;
            }
        }
        return nullptr;
    }

    [[nodiscard]] const RunningApp* ownerByPID(const AudioProcess& process) const
    {
        for (const auto& pid :
             {std::optional(process.pid), process.responsiblePID, process.parentPID}) {
            if (const auto found = pid ? byPID_.find(*pid) : byPID_.end(); found != byPID_.end()) {
                return found->second;
            }
        }
        return nullptr;
    }

    // Cutting at one dot after another, from the end, meets the longest identifier first.
    [[nodiscard]] const RunningApp* ownerByPrefix(std::string_view bundleID) const
    {
        for (auto dot = bundleID.rfind('.'); dot != std::string_view::npos;
             dot = bundleID.rfind('.')) {
            bundleID = bundleID.substr(0, dot);
            if (const auto* app = withBundleID(bundleID)) {
                return app;
            }
        }
        return nullptr;
    }

    std::unordered_map<std::int32_t, const RunningApp*> byPID_;
    std::unordered_map<std::string_view, const RunningApp*> byBundleID_;
};

void appendOnce(std::vector<std::uint32_t>& ids, std::uint32_t id)
{
    if (std::find(ids.begin(), ids.end(), id) == ids.end()) {
        ids.push_back(id);
    }
}

void add(const AudioProcess& process, const RunningApp& owner, AudioApp& app)
{
    app.pids.push_back(owner.pid);
    app.processObjectIDs.push_back(process.id);
    app.isPlaying |= process.isRunningOutput;
    app.isUsingMicrophone |= process.isRunningInput;
    for (const auto device : process.outputDeviceIDs) {
        appendOnce(app.outputDeviceIDs, device);
    }
}

void sortIDs(AudioApp& app)
{
    std::sort(app.pids.begin(), app.pids.end());
    app.pids.erase(std::unique(app.pids.begin(), app.pids.end()), app.pids.end());
    std::sort(app.processObjectIDs.begin(), app.processObjectIDs.end());
}

} // namespace

const std::set<std::string>& AppGrouper::ignoredBundleIDs()
{
    static const std::set<std::string> bundleIDs = {
        "com.apple.controlcenter", "com.apple.PowerChime", "com.apple.loginwindow"};
    return bundleIDs;
}

std::vector<AudioApp> AppGrouper::group(std::span<const AudioProcess> processes,
                                        std::span<const RunningApp> runningApps,
                                        const std::set<std::string>& ignoredBundleIDs,
                                        const std::set<std::int32_t>& excludedPIDs)
{
    const Owners owners(runningApps);
    std::map<std::string, AudioApp> apps; // Ordered as the result has to be.
    for (const auto& process : processes) {
        const auto* owner = owners.owner(process);
        if (!owner || excludedPIDs.contains(owner->pid) ||
            (owner->bundleID && ignoredBundleIDs.contains(*owner->bundleID)))
        {
            continue;
        }
        const auto id = owner->bundleID.value_or("pid:" + std::to_string(owner->pid));
        const auto [entry, isNew] = apps.try_emplace(id);
        if (isNew) {
            entry->second.id = id;
            entry->second.bundleID = owner->bundleID;
        }
        add(process, *owner, entry->second);
    }
    std::vector<AudioApp> result;
    result.reserve(apps.size());
    for (auto& [id, app] : apps) {
        sortIDs(app);
        result.push_back(std::move(app));
    }
    return result;
}

} // namespace fadewell
