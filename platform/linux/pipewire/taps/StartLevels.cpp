#include "platform/linux/pipewire/taps/StartLevels.h"

#include <utility>

namespace fadewell::pipewire {

void StartLevels::setGatedApps(std::vector<GatedApp> apps)
{
    gated_.clear();
    for (auto& app : apps) {
        const auto id = app.appID;
        gated_.emplace(id, std::move(app));
    }
}

void StartLevels::setLoweredStarts(std::optional<LoweredStarts> lowered)
{
    lowered_ = std::move(lowered);
}

void StartLevels::clear()
{
    gated_.clear();
    lowered_.reset();
}

std::optional<StartLevel> StartLevels::of(const std::string& appID) const
{
    StartLevel level{appID};
    if (lowered_ && !appID.empty() && !lowered_->exempt.contains(appID)) {
        level.duck = lowered_->duck;
    }
    if (const auto found = gated_.find(appID); found != gated_.end()) {
        level.gain = found->second.gain;
        level.outputDeviceUID = found->second.outputDeviceUID;
    }
    const auto& output = level.outputDeviceUID;
    const bool isRerouted =
        output && *output != devices_.defaultSinkName() && devices_.deviceForNodeName(*output);
    return level.gain != 1.0 || level.duck != 1.0 || isRerouted ? std::optional(std::move(level))
                                                                : std::nullopt;
}

} // namespace fadewell::pipewire
