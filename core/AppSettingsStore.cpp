#include "core/AppSettingsStore.h"

#include "base/LenientJson.h"

#include <optional>
#include <string_view>
#include <utility>

namespace fadewell {
namespace {

using Records = std::map<std::string, AppAudioSettings>;

bool canBeRemembered(std::string_view appID)
{
    return !appID.empty() && !appID.starts_with("pid:");
}

// One member that is no record makes the whole value unreadable: it wasn't written by us.
std::optional<Records> decode(std::string_view text)
{
    const auto document = parseJson(text);
    if (!document || !document->is_object()) {
        return std::nullopt;
    }
    Records records;
    for (const auto& [appID, value] : document->items()) {
        auto record = AppAudioSettings::fromJson(value);
        if (!record) {
            return std::nullopt;
        }
        if (canBeRemembered(appID) && !record->isDefault()) {
            records.emplace(appID, std::move(*record));
        }
    }
    return records;
}

} // namespace

AppSettingsStore::AppSettingsStore(std::shared_ptr<UserDefaults> defaults, std::string key)
    : defaults_(std::move(defaults))
    , key_(std::move(key))
{
    if (const auto data = defaults_->get<UserDefaults::Data>(key_)) {
        all_ = decode(data->bytes).value_or(Records());
    }
}

AppAudioSettings AppSettingsStore::settings(const std::string& appID) const
{
    const auto found = all_.find(appID);
    return found == all_.end() ? AppAudioSettings::default_() : found->second;
}

void AppSettingsStore::set(const AppAudioSettings& settings, const std::string& appID)
{
    if (!canBeRemembered(appID)) {
        return;
    }
    if (settings.isDefault()) {
        remove(appID);
        return;
    }
    const auto [entry, isNew] = all_.try_emplace(appID, settings);
    if (!isNew && entry->second == settings) {
        return;
    }
    entry->second = settings;
    save();
}

void AppSettingsStore::remove(const std::string& appID)
{
    if (all_.erase(appID) > 0) {
        save();
    }
}

void AppSettingsStore::removeAll()
{
    all_.clear();
    defaults_->remove(key_);
}

void AppSettingsStore::save()
{
    if (all_.empty()) {
        defaults_->remove(key_);
        return;
    }
    auto document = nlohmann::json::object();
    for (const auto& [appID, record] : all_) {
        document[appID] = record.toJson();
    }
    defaults_->set(key_, UserDefaults::Data{dumpJson(document)});
}

} // namespace fadewell
