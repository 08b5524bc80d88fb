#pragma once

#include "audio/StartGate.h"
#include "platform/linux/pipewire/DeviceTable.h"
#include "platform/linux/pipewire/taps/StartLevel.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace fadewell::pipewire {

/// Which apps may not be heard as they come, and how they are to begin. Belongs to the connection's
/// lock.
class StartLevels final {
public:
    explicit StartLevels(const DeviceTable& devices)
        : devices_(devices)
    {}

    // As StartGate has them.
    void setGatedApps(std::vector<GatedApp> apps);
    void setLoweredStarts(std::optional<LoweredStarts> lowered);

    /// From now on every app plays as it comes.
    void clear();

    /// Whether any app may be kept from that.
    [[nodiscard]] bool isAny() const { return !gated_.empty() || lowered_; }

    /// Absent for an app that sounds right by itself: at full level, on the output that it would
    /// play on.
    [[nodiscard]] std::optional<StartLevel> of(const std::string& appID) const;

private:
    const DeviceTable& devices_;
    std::map<std::string, GatedApp> gated_; ///< by app
    std::optional<LoweredStarts> lowered_;
};

} // namespace fadewell::pipewire
