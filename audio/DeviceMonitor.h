#pragma once

#include "audio/DeviceSnapshot.h"
#include "audio/EngineContext.h"
#include "base/Stream.h"

#include <memory>

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
    // The engine's author fills this in.
};

} // namespace fadewell
