#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace fadewell {

/// The systemd unit in a /proc/PID/cgroup file: the innermost service or scope, such as
/// "app-gnome-firefox-4242.scope"; empty where there is none.
[[nodiscard]] std::string unitOfCgroups(std::string_view cgroupFile);

/// The desktop ids that a unit's name may stand for, the likeliest first; empty for session scopes
/// and whatever else names no application. Launchers disagree on whether a dash in an id is
/// escaped, so that only what is installed decides among several.
[[nodiscard]] std::vector<std::string> desktopIDsOfUnit(std::string_view unit);

} // namespace fadewell
