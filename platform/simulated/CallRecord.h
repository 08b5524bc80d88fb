#pragma once

#include "audio/AudioTypes.h"
#include "platform/simulated/HardwareCall.h"

namespace fadewell {

/// One call as it came in, and how it ended.
struct CallRecord {
    HardwareCall call = HardwareCall::has;
    AudioObjectID object = 0;             ///< the object addressed, or the one that was made
    AudioObjectPropertyAddress address{}; ///< of property calls
    OSStatus status = 0;                  ///< of `has`: always 0

    bool operator==(const CallRecord&) const = default;
};

} // namespace fadewell
