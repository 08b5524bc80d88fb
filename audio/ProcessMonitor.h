#pragma once

#include "audio/EngineContext.h"
#include "base/Stream.h"
#include "core/AudioProcess.h"

#include <memory>
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
    // The engine's author fills this in.
};

} // namespace fadewell
