#pragma once

#include "audio/AggregateDescription.h"
#include "audio/AudioTypes.h"

namespace fadewell {

/// When the streams of an aggregate device are listed, in seconds since it was made.
struct SimulatedReadiness {
    double inputAfter = 0;
    double outputAfter = 0;
};

/// An aggregate device that exists.
struct SimulatedAggregate {
    AggregateDescription description;
    SimulatedReadiness readiness;
    double madeAt = 0; ///< uptime
    AudioObjectID inputStream = 0;
    AudioObjectID outputStream = 0;
};

} // namespace fadewell
