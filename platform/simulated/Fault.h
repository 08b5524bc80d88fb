#pragma once

#include "audio/AudioTypes.h"
#include "platform/simulated/HardwareCall.h"

namespace fadewell {

/// What goes wrong with calls that match; a member left at its default restricts or does nothing.
struct Fault {
    HardwareCall call = HardwareCall::has;
    AudioObjectPropertySelector selector = 0; ///< 0 matches every property
    AudioObjectID object = 0;                 ///< 0 matches every object
    int times = 1;                            ///< how many calls it strikes
    OSStatus status = 0;                      ///< not 0: the call does nothing and answers this
    double delay = 0;                         ///< seconds that the call blocks first
    bool objectVanishes = false;              ///< the object addressed is gone before the call acts
    bool givesNothing = false;                ///< a create answers 0 but makes no object
};

} // namespace fadewell
