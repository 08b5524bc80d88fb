#include "control/AppCatalog.h"

#include <algorithm>
#include <set>
#include <utility>

namespace fadewell {
namespace {

bool namesAProcess(const std::string& id)
{
    return id.starts_with("pid:");
}

std::optional<std::string> rawValue(std::optional<CallStatus> status)
{
    if (!status) {
        return std::nullopt;
    }
    return *status == CallStatus::inCall ? "inCall" : "lowered";
}

const char* rawValue(UntappableReason reason)
{
    switch (reason) {
    case UntappableReason::unmanaged:
        return "unmanaged";
    case UntappableReason::passthrough:
        return "passthrough";
    case UntappableReason::exclusive:
        return "exclusive";
    case UntappableReason::pinned:
        return "pinned";
    case UntappableReason::contested:
        return "contested";
    }
    return "unmanaged";
}

AudioApp appForIdentifier(const std::string& id)
{
    AudioApp app;
    app.id = id;
    app.bundleID = id;
    return app;
}

} // namespace

AppCatalog::AppCatalog(std::shared_ptr<MixerModel> model,
                       std::shared_ptr<Workspace> workspace,
                       std::shared_ptr<Tappability> tappability)
    : model_(std::move(model))
    , directory_(workspace)
    , untappable_(std::move(workspace), std::move(tappability))
{
    noteRows(model_->apps.get());
    rows_ = model_->apps.observe([this](const auto& rows) { noteRows(rows); });
}

void AppCatalog::noteRows(const std::vector<AppRowState>& rows)
{
    constexpr std::size_t mostSeen = 512; // Programs choose their identifiers themselves.
    for (const auto& row : rows) {
        if (!namesAProcess(row.id) && (seen_.size() < mostSeen || seen_.contains(row.id))) {
            seen_.insert_or_assign(row.id, row.name);
        }
    }
}

void AppCatalog::fillSettings(AppEntry& entry, const AppAudioSettings& settings) const
{
    entry.volume = settings.volume();
    entry.isMuted = settings.isMuted;
    entry.outputDeviceUID = settings.outputDeviceUID;
    entry.outputDeviceName = settings.outputDeviceName;
    if (settings.outputDeviceUID) {
        if (auto connected = model_->outputDeviceName(*settings.outputDeviceUID)) {
            entry.outputDeviceName = std::move(connected);
        }
    }
}

AppEntry AppCatalog::entry(const std::string& id, std::string name) const
{
    AppEntry entry;
    entry.id = id;
    entry.name = std::move(name);
    if (!namesAProcess(id)) {
        entry.bundleID = id;
    }
    const auto& current = model_->currentApps();
    if (const auto found = current.find(id); found != current.end()) {
        entry.isPlaying = found->second.isPlaying;
        entry.isUsingMicrophone = found->second.isUsingMicrophone;
        entry.bundleID = found->second.bundleID;
        entry.pids = found->second.pids;
    }
    fillSettings(entry, model_->settings(id));
    return entry;
}

AppEntry AppCatalog::entry(const AppRowState& row) const
{
    auto result = entry(row.id, row.name);
    result.isPlaying = row.isPlaying;
    result.isUsingMicrophone = row.isUsingMicrophone;
    result.callStatus = rawValue(row.callStatus);
    fillSettings(result, row.settings);
    return result;
}

std::vector<AppEntry> AppCatalog::untappable()
{
    std::vector<AppEntry> entries;
    for (const auto& [app, identity, reason] : untappable_.list()) {
        AppEntry entry;
        entry.id = app.id;
        entry.name = identity.name;
        entry.isPlaying = app.isPlaying;
        entry.isUsingMicrophone = app.isUsingMicrophone;
        entry.bundleID = app.bundleID;
        entry.pids = app.pids;
        entry.isTappable = false;
        entry.untappableReason = rawValue(reason);
        entries.push_back(std::move(entry));
    }
    return entries;
}

std::vector<AppEntry> AppCatalog::shown()
{
    std::vector<AppEntry> entries;
    std::set<std::string> ids;
    for (const auto& row : model_->apps.get()) {
        entries.push_back(entry(row));
        ids.insert(row.id);
    }
    // An app with a row has streams that can be tapped beside the one that can't.
    for (auto& app : untappable()) {
        if (!ids.contains(app.id)) {
            entries.push_back(std::move(app));
        }
    }
    return entries;
}

std::vector<AppEntry> AppCatalog::remembered()
{
    std::vector<AppEntry> entries;
    for (const auto& app : model_->rememberedApps.get()) {
        entries.push_back(entry(app.id, app.name));
    }
    return entries;
}

std::optional<AppEntry> AppCatalog::find(const std::string& id)
{
    for (auto& app : shown()) {
        if (app.id == id) {
            return std::move(app);
        }
    }
    for (const auto& item : known()) {
        if (item.id == id) {
            return entry(id, item.name);
        }
    }
    return std::nullopt;
}

std::vector<NamedItem> AppCatalog::known()
{
    std::vector<NamedItem> items;
    std::set<std::string> ids;
    const auto add = [&](const std::string& id, const std::string& name) {
        if (ids.insert(id).second) {
            items.push_back({id, name});
        }
    };
    for (const auto& app : shown()) {
        add(app.id, app.name);
    }
    for (const auto& [id, app] : model_->currentApps()) {
        add(id, directory_.identity(app).name);
    }
    for (const auto& app : model_->rememberedApps.get()) {
        add(app.id, app.name);
    }
    for (const auto& [id, name] : seen_) {
        add(id, name);
    }
    return items;
}

std::vector<OutputEntry> AppCatalog::outputs() const
{
    const auto& defaultUID = model_->defaultOutputUID.get();
    std::vector<OutputEntry> entries;
    for (const auto& device : model_->outputDevices.get()) {
        entries.push_back({device.id,
                           device.name,
                           std::string(OutputDevice::rawValue(device.kind)),
                           defaultUID == device.id});
    }
    return entries;
}

std::string AppCatalog::displayName(const std::string& id)
{
    return directory_.identity(appForIdentifier(id)).name;
}

} // namespace fadewell
