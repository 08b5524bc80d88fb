#pragma once

#include "app/Workspace.h"
#include "audio/AudioHardware.h"
#include "audio/ProcessLookup.h"
#include "audio/Tappability.h"
#include "base/LogSink.h"
#include "base/SerialQueue.h"
#include "base/UserDefaults.h"

#include <memory>
#include <optional>
#include <string>

namespace fadewell {

/// What stands behind the seams on this system. Nothing but the factory knows more.
struct Platform {
    std::shared_ptr<AudioHardware> hardware;
    std::shared_ptr<ProcessLookup> processLookup;
    std::shared_ptr<Tappability> tappability; ///< may be absent
    std::shared_ptr<Workspace> workspace;
    std::shared_ptr<UserDefaults> defaults;
};

/// Where this system's programs log to; `isVerbose` lets debug messages through.
[[nodiscard]] std::shared_ptr<LogSink> makeLogSink(bool isVerbose);

/// Connects to the system's sound. Absent, with `error` saying what is wrong and what helps, when
/// it can't work here.
[[nodiscard]] std::optional<Platform> makePlatform(const std::shared_ptr<SerialQueue>& mainQueue,
                                                   const QueueFactory& makeQueue,
                                                   std::string& error);

} // namespace fadewell
