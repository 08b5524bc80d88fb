#pragma once

#include "audio/DeviceSnapshot.h"
#include "audio/EngineContext.h"
#include "audio/HALListener.h"
#include "base/Stream.h"

#include <map>
#include <memory>
#include <optional>

namespace fadewell {

/// Publishes the output devices and the default output whenever they changed, at most every 100 ms.
class DeviceMonitor final : public std::enable_shared_from_this<DeviceMonitor> {
public:
    [[nodiscard]] static std::shared_ptr<DeviceMonitor> create(EngineContext context);
    ~DeviceMonitor();
    DeviceMonitor(const DeviceMonitor&) = delete;
    DeviceMonitor& operator=(const DeviceMonitor&) = delete;

    /// A snapshot equal to the last one is not published; only the newest is kept.
    [[nodiscard]] Stream<DeviceSnapshot>& snapshots();

    /// Begins listening; a second call does nothing. Asynchronous.
    void start();

    /// Drops every listener and finishes the stream before it returns.
    void stop();

    /// The devices as they are now, without the program's own aggregates. [any thread]
    [[nodiscard]] static DeviceSnapshot makeSnapshot(AudioHardware& hardware);

private:
    explicit DeviceMonitor(EngineContext context);
    void startOnQueue() ON_QUEUE(*queue_);
    void reconcileDevices() ON_QUEUE(*queue_);
    void schedulePublish() ON_QUEUE(*queue_);
    void publish() ON_QUEUE(*queue_);
    void listen(HALListeners& listeners,
                AudioObjectID object,
                const AudioObjectPropertyAddress& address,
                Task changed) const;

    const EngineContext context_;
    const std::shared_ptr<SerialQueue> queue_;
    Stream<DeviceSnapshot> snapshots_{1};

    HALListeners systemListeners_ CONFINED_TO(*queue_);
    /// Every device seen, also one without a listener or without an output.
    std::map<AudioObjectID, HALListeners> deviceListeners_ CONFINED_TO(*queue_);
    bool isPublishScheduled_ CONFINED_TO(*queue_) = false;
    Timer publishTimer_ CONFINED_TO(*queue_);
    std::optional<DeviceSnapshot> last_ CONFINED_TO(*queue_);
};

} // namespace fadewell
