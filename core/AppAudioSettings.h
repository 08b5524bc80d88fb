#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

namespace fadewell {

/// What the user chose for one app. The volume is always finite and within 0 to 1.
class AppAudioSettings final {
public:
    AppAudioSettings() = default;

    /// Clamps the volume; drops the name when there is no UID.
    AppAudioSettings(double volume,
                     bool muted,
                     std::optional<std::string> deviceUID,
                     std::optional<std::string> deviceName);

    /// Volume 1, not muted, following the system's output.
    static const AppAudioSettings& default_();

    /// Gain from 0 to 1; 1 leaves the sound unchanged.
    [[nodiscard]] double volume() const { return volume_; }

    /// Clamps to 0 to 1; anything not finite becomes 1.
    void setVolume(double volume);

    [[nodiscard]] bool isDefault() const;

    /// 0 while muted, else the volume.
    [[nodiscard]] double effectiveVolume() const { return isMuted ? 0.0 : volume_; }

    /// Lenient: members that are missing or mistyped take their defaults. Absent only for a value
    /// that is no object.
    [[nodiscard]] static std::optional<AppAudioSettings> fromJson(const nlohmann::json& value);
    [[nodiscard]] nlohmann::json toJson() const;

    bool operator==(const AppAudioSettings&) const = default;

    bool isMuted = false;                        ///< silenced; the volume is kept for unmuting
    std::optional<std::string> outputDeviceUID;  ///< absent: follow the system's default output
    std::optional<std::string> outputDeviceName; ///< its name when chosen, shown while it is absent

private:
    double volume_ = 1.0;
};

} // namespace fadewell
