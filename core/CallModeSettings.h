#pragma once

#include "base/UserDefaults.h"

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <set>
#include <string>

namespace fadewell {

/// The user's call-mode settings. The level is always finite and within 0 to 1.
class CallModeSettings final {
public:
    static constexpr double defaultLevel = 0.2;
    static constexpr const char* defaultKey = "callModeSettings.v1";

    CallModeSettings() = default;
    CallModeSettings(bool automatic, double level, std::set<std::string> excluded);

    /// The gain other apps are lowered to, 0 to 1.
    [[nodiscard]] double level() const { return level_; }

    /// Clamps to 0 to 1; anything not finite becomes the default level.
    void setLevel(double level);

    /// The known call apps less the excluded ones.
    [[nodiscard]] std::set<std::string> effectiveCallApps() const;

    /// The stored settings, or the default ones when there are none or they are unreadable.
    [[nodiscard]] static CallModeSettings load(const UserDefaults& defaults,
                                               const std::string& key = defaultKey);

    /// Default settings are stored by removing the key.
    void save(UserDefaults& defaults, const std::string& key = defaultKey) const;

    [[nodiscard]] static std::optional<CallModeSettings> fromJson(const nlohmann::json& value);
    [[nodiscard]] nlohmann::json toJson() const;

    bool operator==(const CallModeSettings&) const = default;

    bool isAutomatic = true;            ///< detected calls switch call mode on by themselves
    std::set<std::string> excludedApps; ///< known call apps that the user turned off

private:
    double level_ = defaultLevel;
};

} // namespace fadewell
