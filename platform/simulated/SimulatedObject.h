#pragma once

#include "platform/simulated/PropertyTable.h"
#include "platform/simulated/SimulatedAggregate.h"
#include "platform/simulated/SimulatedDevice.h"
#include "platform/simulated/SimulatedProcess.h"
#include "platform/simulated/SimulatedTap.h"

#include <variant>

namespace fadewell {

/// The object that everything else is listed by.
struct SimulatedSystem {};

using SimulatedDetail = std::
    variant<SimulatedSystem, SimulatedProcess, SimulatedDevice, SimulatedTap, SimulatedAggregate>;

/// One object of the sound system.
struct SimulatedObject {
    SimulatedDetail detail;
    PropertyTable properties;
};

} // namespace fadewell
