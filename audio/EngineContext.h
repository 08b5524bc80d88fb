#pragma once

#include "audio/AudioHardware.h"
#include "audio/ProcessLookup.h"
#include "base/Clock.h"
#include "base/SerialQueue.h"

#include <memory>

namespace fadewell {

/// What every engine service stands on: the platform, time, and queues of its own.
struct EngineContext {
    std::shared_ptr<AudioHardware> hardware;
    std::shared_ptr<ProcessLookup> processLookup;
    std::shared_ptr<Clock> clock;
    QueueFactory makeQueue;
};

} // namespace fadewell
