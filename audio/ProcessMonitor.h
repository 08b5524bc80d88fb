#pragma once

#include "audio/EngineContext.h"
#include "audio/HALListener.h"
#include "base/Logger.h"
#include "base/Stream.h"
#include "core/AudioProcess.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace fadewell {

/// Publishes the complete list of audio processes whenever it may have changed, at most every 50
/// ms.
///
/// All operations may be called from the main thread; its state lives on its own queue.
class ProcessMonitor final : public std::enable_shared_from_this<ProcessMonitor> {
public:
    [[nodiscard]] static std::shared_ptr<ProcessMonitor> create(EngineContext context);
    ~ProcessMonitor();
    ProcessMonitor(const ProcessMonitor&) = delete;
    ProcessMonitor& operator=(const ProcessMonitor&) = delete;

    /// Every publication is the whole list, sent even when nothing changed; only the newest is
    /// kept.
    [[nodiscard]] Stream<std::vector<AudioProcess>>& processes();

    /// Begins listening; a second call does nothing. Asynchronous.
    void start();

    /// Publishes again after the usual delay with fresh running flags and devices. Asynchronous.
    void refresh();

    /// Drops every listener and finishes the stream before it returns.
    void stop();

private:
    /// What never changes about a process, read once for each process object.
    struct Identity {
        std::int32_t pid = 0; ///< above 0
        std::optional<std::string> bundleID;
        std::optional<std::int32_t> parentPID;      ///< above 1
        std::optional<std::int32_t> responsiblePID; ///< another process
    };

    explicit ProcessMonitor(EngineContext context);
    void startOnQueue() ON_QUEUE(*queue_);
    void stopOnQueue() ON_QUEUE(*queue_);
    void reloadProcessList() ON_QUEUE(*queue_);
    void forgetAllBut(const std::vector<AudioObjectID>& list) ON_QUEUE(*queue_);
    void remember(AudioObjectID process) ON_QUEUE(*queue_);
    void schedulePublish() ON_QUEUE(*queue_);
    void publish() ON_QUEUE(*queue_);
    [[nodiscard]] std::optional<Identity> readIdentity(AudioObjectID process) const;
    [[nodiscard]] AudioProcess readProcess(AudioObjectID process, const Identity& identity) const;

    const EngineContext context_;
    const std::shared_ptr<SerialQueue> queue_;
    const Logger log_{"processes"};
    Stream<std::vector<AudioProcess>> processes_{1};

    std::unique_ptr<HALListener> listListener_ CONFINED_TO(*queue_);
    /// Every object seen, also one without a listener.
    std::map<AudioObjectID, HALListeners> processListeners_ CONFINED_TO(*queue_);
    /// Without those whose pid could not be read.
    std::map<AudioObjectID, Identity> identities_ CONFINED_TO(*queue_);
    std::vector<AudioObjectID> order_ CONFINED_TO(*queue_);
    bool isPublishScheduled_ CONFINED_TO(*queue_) = false;
    Timer publishTimer_ CONFINED_TO(*queue_);
};

} // namespace fadewell
