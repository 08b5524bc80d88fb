#include "platform/linux/identity/UnitName.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <utility>

namespace fadewell {
namespace {

std::string_view withoutSuffix(std::string_view text, std::string_view suffix)
{
    return text.ends_with(suffix) ? text.substr(0, text.size() - suffix.size()) : text;
}

std::string_view unitOfPath(std::string_view path)
{
    while (!path.empty()) {
        const std::size_t slash = path.rfind('/');
        const auto part = slash == std::string_view::npos ? path : path.substr(slash + 1);
        if (part.ends_with(".scope") || part.ends_with(".service")) {
            return part;
        }
        path = slash == std::string_view::npos ? std::string_view{} : path.substr(0, slash);
    }
    return {};
}

int hexDigit(char c)
{
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// systemd writes what a unit's name can't hold as \xNN.
std::string unescaped(std::string_view name)
{
    std::string text;
    for (std::size_t index = 0; index < name.size(); ++index) {
        if (name.substr(index, 2) == "\\x" && index + 3 < name.size() &&
            hexDigit(name[index + 2]) >= 0 && hexDigit(name[index + 3]) >= 0)
        {
            text += static_cast<char>(hexDigit(name[index + 2]) * 16 + hexDigit(name[index + 3]));
            index += 3;
        } else {
            text += name[index];
        }
    }
    return text;
}

/// Snap appends a UUID, which has dashes itself, after a dash or a dot.
std::string_view withoutUuid(std::string_view name)
{
    constexpr std::size_t length = 36;
    if (name.size() <= length) {
        return name;
    }
    const auto tail = name.substr(name.size() - length);
    const bool isUuid =
        std::all_of(tail.begin(), tail.end(), [](char c) { return c == '-' || hexDigit(c) >= 0; });
    const char separator = name[name.size() - length - 1];
    return isUuid && (separator == '-' || separator == '.')
               ? name.substr(0, name.size() - length - 1)
               : name;
}

std::vector<std::string> snapID(std::string_view name)
{
    name = withoutUuid(name);
    const std::size_t dot = name.find('.');
    if (dot == std::string_view::npos || dot == 0) {
        return {};
    }
    return {unescaped(name.substr(0, dot)) + '_' + unescaped(name.substr(dot + 1))};
}

std::vector<std::string> appIDs(std::string_view name, bool isScope)
{
    if (isScope) {
        // The last part tells instances apart; without it the unit was named by hand.
        const std::size_t dash = name.rfind('-');
        if (dash == std::string_view::npos) {
            return {};
        }
        name = name.substr(0, dash);
    }
    name = name.substr(0, name.find('@'));
    std::vector<std::string> ids;
    const auto add = [&ids](std::string_view part) {
        auto id = unescaped(withoutSuffix(part, ".desktop"));
        if (!id.empty() && std::find(ids.begin(), ids.end(), id) == ids.end()) {
            ids.push_back(std::move(id));
        }
    };
    add(name.substr(name.rfind('-') + 1)); // Dashes escaped, a launcher in front or not.
    add(name.substr(name.find('-') + 1));  // A launcher in front, dashes not escaped.
    add(name);
    return ids;
}

/// "dbus-:1.42-org.example.Player@0.service": started by the bus under its name.
std::vector<std::string> busID(std::string_view name)
{
    const std::size_t dash = name.find('-');
    if (dash == std::string_view::npos) {
        return {};
    }
    return {unescaped(name.substr(dash + 1, name.find('@') - dash - 1))};
}

} // namespace

std::string unitOfCgroups(std::string_view cgroupFile)
{
    std::string_view unit;
    while (!cgroupFile.empty()) {
        const auto line = cgroupFile.substr(0, cgroupFile.find('\n'));
        cgroupFile.remove_prefix(std::min(line.size() + 1, cgroupFile.size()));
        const bool isUnified = line.starts_with("0::");
        const std::size_t systemd = line.find(":name=systemd:");
        if (!isUnified && systemd == std::string_view::npos) {
            continue;
        }
        const auto found = unitOfPath(
            line.substr(line.find('/') == std::string_view::npos ? line.size() : line.find('/')));
        if (unit.empty() || (isUnified && !found.empty())) {
            unit = found;
        }
    }
    return std::string(unit);
}

std::vector<std::string> desktopIDsOfUnit(std::string_view unit)
{
    const bool isScope = unit.ends_with(".scope");
    auto name = withoutSuffix(withoutSuffix(unit, ".scope"), ".service");
    const auto takePrefix = [&name](std::string_view prefix) {
        const bool starts = name.starts_with(prefix);
        name.remove_prefix(starts ? prefix.size() : 0);
        return starts;
    };
    if (takePrefix("snap.")) {
        return snapID(name);
    }
    if (takePrefix("dbus-:")) {
        return busID(name);
    }
    return takePrefix("app-") ? appIDs(name, isScope) : std::vector<std::string>{};
}

} // namespace fadewell
