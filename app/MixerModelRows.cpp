#include "app/MixerModel.h"
#include "base/LocalizedText.h"
#include "base/ProgramName.h"
#include "core/AppGrouper.h"

#include <algorithm>
#include <chrono>
#include <fmt/ranges.h>

namespace fadewell {
namespace {

// Apps of the same name stay in the order of their identifiers, so that rows never swap places.
template <class Named>
void sortByName(std::vector<Named>& items)
{
    std::sort(items.begin(), items.end(), [](const Named& left, const Named& right) {
        const int order = localizedStandardCompare(left.name, right.name);
        return order != 0 ? order < 0 : left.id < right.id;
    });
}

std::string joinedIDs(const std::vector<AppRowState>& rows)
{
    std::vector<ProgramName> ids;
    ids.reserve(rows.size());
    for (const auto& row : rows) {
        ids.push_back({row.id});
    }
    return fmt::format("{}", fmt::join(ids, ", "));
}

} // namespace

std::set<std::string> MixerModel::currentAppIDs(bool AudioApp::*flag) const
{
    std::set<std::string> ids;
    for (const auto& [id, app] : current_) {
        if (app.*flag) {
            ids.insert(id);
        }
    }
    return ids;
}

std::set<std::string> MixerModel::duckExemptIDs() const
{
    auto ids = currentAppIDs(&AudioApp::isUsingMicrophone);
    ids.insert(callMode_.callAppIDs.begin(), callMode_.callAppIDs.end());
    return ids;
}

void MixerModel::rebuildRows()
{
    const auto playing = currentAppIDs(&AudioApp::isPlaying);
    const auto shown = linger_.update(playing, now());
    const auto exempt = duckExemptIDs();
    publishMicrophoneUsers();
    std::vector<AppRowState> rows;
    for (const auto& id : shown) {
        if (auto row = makeRow(id, exempt)) {
            rows.push_back(std::move(*row));
        }
    }
    std::erase_if(lastKnown_, [&](const auto& entry) { return !shown.contains(entry.first); });
    sortByName(rows);
    if (rows != apps.get()) {
        log_.debug("Apps: {}", joinedIDs(rows));
        apps.set(std::move(rows));
    }
    scheduleExpiry(playing);
}

void MixerModel::publishMicrophoneUsers()
{
    const auto& before = microphoneUsers.get();
    const auto began = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    std::vector<MicrophoneUser> users;
    for (const auto& [id, app] : current_) {
        if (app.isUsingMicrophone) {
            const auto known = std::find_if(
                before.begin(), before.end(), [&](const auto& user) { return user.id == id; });
            users.push_back(
                {id, directory_.identity(app).name, known == before.end() ? began : known->since});
        }
    }
    sortByName(users);
    std::vector<std::string> names;
    for (const auto& user : users) {
        names.push_back(user.name);
    }
    microphoneUsers.set(std::move(users));
    microphoneUserNames.set(std::move(names));
}

std::optional<AppRowState> MixerModel::makeRow(const std::string& appID,
                                               const std::set<std::string>& exempt)
{
    if (const auto found = current_.find(appID); found != current_.end()) {
        const auto& app = found->second;
        const auto identity = directory_.identity(app);
        AppRowState row{appID,
                        identity.name,
                        identity.icon,
                        app.isPlaying,
                        app.isUsingMicrophone,
                        settings(appID),
                        std::nullopt,
                        callStatus(app, exempt)};
        if (!app.outputDeviceIDs.empty()) {
            row.ownOutputDeviceID = app.outputDeviceIDs.front();
        }
        lastKnown_.insert_or_assign(appID, row);
        return row;
    }
    if (const auto known = lastKnown_.find(appID); known != lastKnown_.end()) {
        auto row = known->second;
        row.isPlaying = false;
        row.isUsingMicrophone = false;
        row.callStatus.reset();
        return row;
    }
    return std::nullopt;
}

std::optional<CallStatus> MixerModel::callStatus(const AudioApp& app,
                                                 const std::set<std::string>& exempt) const
{
    if (!callMode_.isActive()) {
        return std::nullopt;
    }
    if (exempt.contains(app.id)) {
        return CallStatus::inCall;
    }
    return app.isPlaying ? std::optional(CallStatus::lowered) : std::nullopt;
}

void MixerModel::scheduleExpiry(const std::set<std::string>& playing)
{
    expiryTimer_.cancel();
    if (const auto expiry = linger_.nextExpiry(playing)) {
        expiryTimer_ =
            services_.mainQueue->after(delayUntil(*expiry), weakly(&MixerModel::rebuildRows));
    }
}

std::vector<TapRequest> MixerModel::tapRequests(double level,
                                                const std::set<std::string>& exempt) const
{
    std::vector<TapRequest> requests;
    requests.reserve(current_.size());
    for (const auto& [id, app] : current_) {
        const auto chosen = settings(id);
        const bool isLowered = callMode_.isActive() && !exempt.contains(id);
        requests.push_back({id,
                            app.processObjectIDs,
                            chosen.effectiveVolume(),
                            isLowered ? level : 1.0,
                            app.isPlaying,
                            app.outputDeviceIDs,
                            chosen.outputDeviceUID});
    }
    return requests;
}

void MixerModel::pushTapRequests()
{
    updateLoweredStarts();
    if (services_.taps) {
        services_.taps->update(tapRequests(callModeSettings.get().level(), duckExemptIDs()));
    }
}

std::vector<RememberedApp> MixerModel::rememberedAppsFromStore()
{
    std::vector<RememberedApp> remembered;
    if (!services_.store) {
        return remembered;
    }
    for (const auto& [id, saved] : services_.store->all()) {
        AudioApp app;
        app.id = id;
        app.bundleID = id;
        const auto identity = directory_.identity(app);
        remembered.push_back({id, identity.name, identity.icon, saved});
    }
    sortByName(remembered);
    return remembered;
}

void MixerModel::updateStartGate()
{
    if (!services_.startGate) {
        return;
    }
    std::vector<GatedApp> gated;
    for (const auto& [id, chosen] : settings_) {
        if (!chosen.isDefault()) {
            gated.push_back({id, chosen.effectiveVolume(), chosen.outputDeviceUID});
        }
    }
    services_.startGate->setGatedApps(std::move(gated));
}

void MixerModel::updateLoweredStarts()
{
    std::optional<LoweredStarts> lowered;
    if (callMode_.isActive() && callModeSettings.get().level() < 1.0) {
        lowered = {callModeSettings.get().level(), duckExemptIDs()};
        // Nobody gives these a path that they could be lowered and come back on.
        const auto& ignored = AppGrouper::ignoredBundleIDs();
        lowered->exempt.insert(ignored.begin(), ignored.end());
    }
    if (services_.startGate && lowered != loweredStarts_) {
        loweredStarts_ = lowered;
        services_.startGate->setLoweredStarts(std::move(lowered));
    }
}

void MixerModel::refreshRememberedApps()
{
    if (services_.store) {
        rememberedApps.set(rememberedAppsFromStore());
    }
}

} // namespace fadewell
