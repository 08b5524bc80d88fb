#include "platform/linux/identity/KnownApps.h"

#include "base/LenientJson.h"

#include <algorithm>
#include <utility>

namespace fadewell {
namespace {

std::vector<std::string> strings(const nlohmann::json& object, const char* name)
{
    std::vector<std::string> found;
    if (const auto list = object.find(name); list != object.end() && list->is_array()) {
        for (const auto& item : *list) {
            if (item.is_string()) {
                found.push_back(item.get<std::string>());
            }
        }
    }
    return found;
}

} // namespace

std::string lowerCase(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return lower;
}

const KnownApps& KnownApps::instance()
{
    static const KnownApps known(knownAppsJson);
    return known;
}

KnownApps::KnownApps(std::string_view json)
{
    const auto table = parseJson(json);
    if (!table || !table->is_object()) {
        return;
    }
    for (const auto& app : table->value("apps", nlohmann::json::array())) {
        const auto id = stringMember(app, "id").value_or("");
        App entry{stringMember(app, "name").value_or(id), strings(app, "aliases")};
        canonicalIDs_.emplace(lowerCase(id), id);
        for (const auto& alias : entry.aliases) {
            canonicalIDs_.emplace(lowerCase(alias), id);
        }
        apps_.emplace(id, std::move(entry));
    }
    const auto addRole = [&](const char* list, Role role) {
        for (const auto& program : strings(*table, list)) {
            roles_.emplace(lowerCase(program), role);
        }
    };
    addRole("terminals", Role::terminal);
    addRole("shells", Role::shell);
    addRole("sessions", Role::session);
    addRole("launchers", Role::launcher);
    addRole("wrappers", Role::wrapper);
    for (const auto& name : strings(*table, "genericNames")) {
        genericNames_.insert(lowerCase(name));
    }
}

std::optional<std::string> KnownApps::canonicalID(std::string_view name) const
{
    const auto found = canonicalIDs_.find(lowerCase(name));
    return found == canonicalIDs_.end() ? std::nullopt : std::optional(found->second);
}

const std::vector<std::string>& KnownApps::aliases(std::string_view canonicalID) const
{
    static const std::vector<std::string> none;
    const auto found = apps_.find(canonicalID);
    return found == apps_.end() ? none : found->second.aliases;
}

std::optional<std::string> KnownApps::name(std::string_view canonicalID) const
{
    const auto found = apps_.find(canonicalID);
    return found == apps_.end() ? std::nullopt : std::optional(found->second.name);
}

KnownApps::Role KnownApps::role(std::string_view program) const
{
    const auto found = roles_.find(lowerCase(program));
    return found == roles_.end() ? Role::none : found->second;
}

bool KnownApps::isGenericName(std::string_view name) const
{
    return genericNames_.contains(lowerCase(name));
}

} // namespace fadewell
