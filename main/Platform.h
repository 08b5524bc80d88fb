#pragma once

#include "app/LoginItemService.h"
#include "app/SystemInspection.h"
#include "app/Workspace.h"
#include "audio/AudioHardware.h"
#include "audio/ProcessLookup.h"
#include "audio/SoundServerInfo.h"
#include "audio/StartGate.h"
#include "audio/Tappability.h"
#include "base/LogSink.h"
#include "base/SerialQueue.h"
#include "base/UserDefaults.h"
#include "shortcuts/HotKeyService.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace fadewell {

class Heartbeat;

/// What stands behind the seams on this system. Nothing but the factory knows more.
struct Platform {
    std::shared_ptr<AudioHardware> hardware;
    std::shared_ptr<ProcessLookup> processLookup;
    std::shared_ptr<Tappability> tappability;     ///< may be absent
    std::shared_ptr<StartGate> startGate;         ///< may be absent
    std::shared_ptr<SoundServerInfo> soundServer; ///< may be absent
    std::shared_ptr<Workspace> workspace;
    std::shared_ptr<UserDefaults> defaults;
    std::shared_ptr<shortcuts::HotKeyService> hotKeys;
    std::shared_ptr<LoginItemService> loginItemService; ///< may be absent
    std::shared_ptr<SystemInspection> inspection;
};

/// Where this system's programs log to; `isVerbose` lets debug messages through.
[[nodiscard]] std::shared_ptr<LogSink> makeLogSink(bool isVerbose);

/// Runs `program` and returns its exit status. Where the system can, in a process of its own that
/// is ended when it hangs and started again, with a heartbeat to show that it lives; elsewhere
/// here, without one. Before Qt and before any thread starts. [main thread]
[[nodiscard]] int
runSupervised(const std::function<int(const std::shared_ptr<Heartbeat>& heartbeat)>& program);

/// Connects to the system's sound. Absent, with `error` saying what is wrong and what helps, when
/// it can't work here. `heartbeat` may be absent.
[[nodiscard]] std::optional<Platform> makePlatform(const std::shared_ptr<SerialQueue>& mainQueue,
                                                   const QueueFactory& makeQueue,
                                                   std::shared_ptr<Heartbeat> heartbeat,
                                                   std::string& error);

} // namespace fadewell
