#include "core/AppAudioSettings.h"

#include "base/LenientJson.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace fadewell {

AppAudioSettings::AppAudioSettings(double volume,
                                   bool muted,
                                   std::optional<std::string> deviceUID,
                                   std::optional<std::string> deviceName)
    : isMuted(muted)
    , outputDeviceUID(std::move(deviceUID))
{
    setVolume(volume);
    if (outputDeviceUID) {
        outputDeviceName = std::move(deviceName);
    }
}

const AppAudioSettings& AppAudioSettings::default_()
{
    static const AppAudioSettings settings;
    return settings;
}

void AppAudioSettings::setVolume(double volume)
{
    volume_ = std::isfinite(volume) ? std::clamp(volume, 0.0, 1.0) : 1.0;
}

bool AppAudioSettings::isDefault() const
{
    return *this == default_();
}

std::optional<AppAudioSettings> AppAudioSettings::fromJson(const nlohmann::json& value)
{
    if (!value.is_object()) {
        return std::nullopt;
    }
    auto uid = stringMember(value, "outputDeviceUID");
    if (uid && uid->empty()) {
        uid.reset();
    }
    return AppAudioSettings(numberMember(value, "volume").value_or(1.0),
                            boolMember(value, "isMuted").value_or(false),
                            std::move(uid),
                            stringMember(value, "outputDeviceName"));
}

nlohmann::json AppAudioSettings::toJson() const
{
    nlohmann::json value = {{"volume", volume_}, {"isMuted", isMuted}};
    if (outputDeviceUID) {
        value["outputDeviceUID"] = *outputDeviceUID;
    }
    if (outputDeviceName) {
        value["outputDeviceName"] = *outputDeviceName;
    }
    return value;
}

} // namespace fadewell
