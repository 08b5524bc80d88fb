#include "core/CallModeSettings.h"

#include "base/LenientJson.h"
#include "core/KnownCallApps.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace fadewell {
namespace {

// Absent unless it is an array of strings and nothing else.
std::optional<std::set<std::string>> stringSetMember(const nlohmann::json& object, const char* name)
{
    const auto found = object.find(name);
    if (found == object.end() || !found->is_array()) {
        return std::nullopt;
    }
    std::set<std::string> strings;
    for (const auto& element : *found) {
        if (!element.is_string()) {
            return std::nullopt;
        }
        strings.insert(element.get<std::string>());
    }
    return strings;
}

} // namespace

CallModeSettings::CallModeSettings(bool automatic, double level, std::set<std::string> excluded)
    : isAutomatic(automatic)
    , excludedApps(std::move(excluded))
{
    setLevel(level);
}

void CallModeSettings::setLevel(double level)
{
    level_ = std::isfinite(level) ? std::clamp(level, 0.0, 1.0) : defaultLevel;
}

std::set<std::string> CallModeSettings::effectiveCallApps() const
{
    auto apps = KnownCallApps::all();
    std::erase_if(apps, [this](const auto& app) { return excludedApps.contains(app); });
    return apps;
}

CallModeSettings CallModeSettings::load(const UserDefaults& defaults, const std::string& key)
{
    const auto data = defaults.get<UserDefaults::Data>(key);
    const auto document = data ? parseJson(data->bytes) : std::nullopt;
    const auto settings = document ? fromJson(*document) : std::nullopt;
    return settings.value_or(CallModeSettings());
}

void CallModeSettings::save(UserDefaults& defaults, const std::string& key) const
{
    if (*this == CallModeSettings()) {
        defaults.remove(key);
    } else {
        defaults.set(key, UserDefaults::Data{dumpJson(toJson())});
    }
}

std::optional<CallModeSettings> CallModeSettings::fromJson(const nlohmann::json& value)
{
    if (!value.is_object()) {
        return std::nullopt;
    }
    return CallModeSettings(
        boolMember(value, "isAutomatic").value_or(true),
        numberMember(value, "level").value_or(defaultLevel),
        stringSetMember(value, "excludedApps").value_or(std::set<std::string>()));
}

nlohmann::json CallModeSettings::toJson() const
{
    return {{"isAutomatic", isAutomatic}, {"level", level_}, {"excludedApps", excludedApps}};
}

} // namespace fadewell
