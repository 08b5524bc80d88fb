#include "control/diagnostics/StoredSettingsText.h"

#include "control/values/JsonOutput.h"

#include <fmt/format.h>
#include <utility>

namespace fadewell {
namespace {

OrderedJson parsed(const std::string& text)
{
    return OrderedJson::parse(text, nullptr, false);
}

/// The member at the end of a path of names; null where there is none.
OrderedJson member(OrderedJson json, std::initializer_list<const char*> path)
{
    for (const char* const name : path) {
        json = json.is_object() && json.contains(name) ? OrderedJson(json[name]) : OrderedJson();
    }
    return json;
}

OrderedJson masked(const NameMask& mask, const OrderedJson& json)
{
    if (json.is_string()) {
        return mask.text(json.get<std::string>());
    }
    if (json.is_array()) {
        auto list = OrderedJson::array();
        for (const auto& item : json) {
            list.push_back(masked(mask, item));
        }
        return list;
    }
    if (!json.is_object()) {
        return json;
    }
    auto object = OrderedJson::object();
    for (const auto& [key, value] : json.items()) {
        auto name = mask.text(key);
        while (object.contains(name)) {
            name += " (another)"; // Two of one app: neither may hide the other.
        }
        object[name] = masked(mask, value);
    }
    return object;
}

} // namespace

void noteApps(NameMask& mask, const SystemInspection::StoredSettings& settings)
{
    const auto json = parsed(settings.text);
    const auto apps = member(json, {"appAudioSettings.v1", "json"});
    if (apps.is_object()) {
        for (const auto& [app, value] : apps.items()) {
            mask.note(app);
        }
    }
    const auto excluded = member(json, {"callModeSettings.v1", "json", "excludedApps"});
    if (excluded.is_array()) {
        for (const auto& app : excluded) {
            if (app.is_string()) {
                mask.note(app.get<std::string>());
            }
        }
    }
}

std::string storedSettingsText(const NameMask& mask,
                               const SystemInspection::StoredSettings& settings)
{
    if (!settings.problem.empty()) {
        return mask.text(settings.problem) + '\n';
    }
    const auto json = parsed(settings.text);
    if (json.is_object()) {
        return dump(masked(mask, json), 2) + '\n';
    }
    // Nobody can tell which of its words are names.
    return mask.leavesOutApps()
               ? fmt::format("The file is damaged ({} bytes): left out, as it may name apps.\n",
                             settings.text.size())
               : "The file is damaged:\n" + mask.text(settings.text) + '\n';
}

} // namespace fadewell
