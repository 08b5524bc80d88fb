#include "app/MixerModel.h"

#include <algorithm>

namespace fadewell {

CallMode::Configuration MixerModel::configuration(const CallModeSettings& settings)
{
    return {settings.effectiveCallApps(), settings.isAutomatic, 1.0, 5.0};
}

void MixerModel::toggleCallMode()
{
    setCallModeActive(!isCallModeActive.get());
}

void MixerModel::setCallModeActive(bool on)
{
    services_.mainQueue->assertCurrent();
    callMode_.manualOverride = on;
    applyCallMode();
}

void MixerModel::followCallDetection()
{
    services_.mainQueue->assertCurrent();
    callMode_.manualOverride.reset();
    applyCallMode();
}

void MixerModel::setCallModeSettings(const CallModeSettings& settings)
{
    services_.mainQueue->assertCurrent();
    callModeSettings.set(settings);
    // Only a model with a store is there to remember anything.
    if (services_.store) {
        callModeSettings.get().save(*services_.defaults);
    }
    callMode_.configuration = configuration(callModeSettings.get());
    reevaluateCallMode();
}

void MixerModel::reevaluateCallMode()
{
    refreshCallDetection();
    applyCallMode();
}

void MixerModel::refreshCallDetection()
{
    callMode_.update(currentAppIDs(&AudioApp::isUsingMicrophone), now());
    callModeTimer_.cancel();
    if (const auto deadline = callMode_.nextDeadline()) {
        callModeTimer_ = services_.mainQueue->after(delayUntil(*deadline),
                                                    weakly(&MixerModel::reevaluateCallMode));
    }
}

void MixerModel::applyCallMode()
{
    const bool isActive = callMode_.isActive();
    if (isActive != isCallModeActive.get()) {
        log_.info("Call mode {}", isActive ? "on" : "off");
    }
    isCallModeActive.set(isActive);
    isCallDetected.set(callMode_.isCallDetected);
    std::vector<std::string> names;
    for (const auto& id : callMode_.callAppIDs) {
        if (const auto found = current_.find(id); found != current_.end()) {
            names.push_back(directory_.identity(found->second).name);
        }
    }
    std::sort(names.begin(), names.end()); // By code point, unlike the rows: the same everywhere.
    callAppNames.set(std::move(names));
    rebuildRows();
    pushTapRequests();
}

} // namespace fadewell
