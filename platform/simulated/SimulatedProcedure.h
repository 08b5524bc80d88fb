#pragma once

#include "audio/AudioTypes.h"

namespace fadewell {

/// A registered I/O procedure.
struct SimulatedProcedure {
    AudioObjectID device = 0;
    IOProcID id = 0;
    AudioDeviceIOProc function = nullptr;
    void* client = nullptr;
    bool isStarted = false;
    bool isStalled = false; ///< started, but never called
    int callsUnderWay = 0;  ///< destroying waits for these
    double sampleTime = 0;  ///< frames since it was registered
};

} // namespace fadewell
