#pragma once

#include "base/UserDefaults.h"
#include "core/AppAudioSettings.h"

#include <map>
#include <memory>
#include <string>

namespace fadewell {

/// Every app's remembered settings, mirrored into the user defaults on each effective change.
///
/// Never holds an empty identifier, a "pid:" identifier (those name a process, not an app) or a
/// default record after loading. An unreadable stored value counts as empty and stays until the
/// next save. [main queue]
class AppSettingsStore final {
public:
    static constexpr const char* defaultKey = "appAudioSettings.v1";

    /// Loads; writes nothing.
    explicit AppSettingsStore(std::shared_ptr<UserDefaults> defaults, std::string key = defaultKey);

    [[nodiscard]] const std::map<std::string, AppAudioSettings>& all() const { return all_; }

    /// The app's record, or the default one.
    [[nodiscard]] AppAudioSettings settings(const std::string& appID) const;

    /// Remembers the record, or forgets the app when it is the default one; saves only on change.
    void set(const AppAudioSettings& settings, const std::string& appID);

    void remove(const std::string& appID);
    void removeAll();

private:
    void save();

    std::map<std::string, AppAudioSettings> all_;
    std::shared_ptr<UserDefaults> defaults_;
    std::string key_;
};

} // namespace fadewell
