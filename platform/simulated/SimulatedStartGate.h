#pragma once

#include "audio/StartGate.h"

#include <utility>
#include <vector>

namespace fadewell {

/// Remembers what it was told. Belongs to whoever tells it.
class SimulatedStartGate final : public StartGate {
public:
    void setGatedApps(std::vector<GatedApp> apps) override { gatedApps = std::move(apps); }

    void setLoweredStarts(std::optional<LoweredStarts> starts) override
    {
        lowered = std::move(starts);
    }

    std::vector<GatedApp> gatedApps;
    std::optional<LoweredStarts> lowered;
};

} // namespace fadewell
