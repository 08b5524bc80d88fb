#pragma once

#include "audio/AudioHardware.h"
#include "base/Clock.h"
#include "platform/linux/pipewire/DeviceTable.h"
#include "platform/linux/pipewire/Graph.h"
#include "platform/linux/pipewire/GraphObserver.h"
#include "platform/linux/pipewire/ListenerTable.h"
#include "platform/linux/pipewire/ObjectIDs.h"
#include "platform/linux/pipewire/ProcessTable.h"
#include "platform/linux/pipewire/PropertyValue.h"
#include "platform/linux/pipewire/StreamObserver.h"
#include "platform/linux/pipewire/taps/LoopTimer.h"
#include "platform/linux/pipewire/taps/RetiredTaps.h"
#include "platform/linux/pipewire/taps/TapObjects.h"
#include "platform/linux/pipewire/taps/TapRouter.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace fadewell::pipewire {

/// Process taps, aggregate devices and I/O procedures of the audio hardware, as streams that the
/// apps are routed through.
///
/// Every call takes the connection's lock itself and expects it not to be held, except where a
/// comment says [locked]. Calls about one tap come one after another.
class Taps final : private GraphObserver, private StreamObserver {
public:
    Taps(Graph& graph,
         ObjectIDs& ids,
         ListenerTable& listeners,
         const DeviceTable& devices,
         ProcessTable& processes);
    ~Taps() override;
    Taps(const Taps&) = delete;
    Taps& operator=(const Taps&) = delete;

    // Objects. [locked]
    [[nodiscard]] bool owns(AudioObjectID object) const;
    [[nodiscard]] std::vector<AudioObjectID> tapIDs() const;
    [[nodiscard]] std::vector<AudioObjectID> aggregateIDs() const;
    [[nodiscard]] AudioObjectID aggregateForUID(std::string_view uid) const;

    // Properties of taps and aggregates, as AudioHardware has them. [locked]
    [[nodiscard]] bool has(AudioObjectID object, const AudioObjectPropertyAddress& address) const;
    OSStatus dataSize(AudioObjectID object,
                      const AudioObjectPropertyAddress& address,
                      std::uint32_t& size) const;
    OSStatus getData(AudioObjectID object,
                     const AudioObjectPropertyAddress& address,
                     std::span<std::byte> data,
                     std::uint32_t& used) const;
    OSStatus getString(AudioObjectID object,
                       const AudioObjectPropertyAddress& address,
                       std::optional<std::string>& text) const;

    OSStatus tapDescription(AudioObjectID tap, TapDescription& description);
    OSStatus setTapDescription(AudioObjectID tap, const TapDescription& description);
    OSStatus createProcessTap(const TapDescription& description, AudioObjectID& tap);
    OSStatus destroyProcessTap(AudioObjectID tap);
    OSStatus createAggregateDevice(const AggregateDescription& description, AudioObjectID& device);
    OSStatus destroyAggregateDevice(AudioObjectID device);
    OSStatus createIOProc(AudioObjectID device, AudioDeviceIOProc call, void* client, IOProcID& id);
    OSStatus destroyIOProc(AudioObjectID device, IOProcID id);
    OSStatus start(AudioObjectID device, IOProcID id);
    OSStatus stop(AudioObjectID device, IOProcID id);

private:
    void nodeRemoved(const GraphNode& node) override;
    void metadataAvailable(bool isAvailable) override;
    void writeRefused(std::uint32_t object, int result) override;
    void disconnected() override;
    void streamAppeared(AudioObjectID process, std::uint32_t node) override;
    void streamChanged(AudioObjectID process, std::uint32_t node) override;
    void streamGone(AudioObjectID process, std::uint32_t node) override;

    // Taps.cpp [locked]
    [[nodiscard]] TapObject* tapWithUUID(std::string_view uuid);
    [[nodiscard]] ProcedureObject* procedure(AudioObjectID device, IOProcID id);
    [[nodiscard]] TapObject& tapOf(const ProcedureObject& object);
    [[nodiscard]] bool isCapturePermitted() const;
    void arm(TapObject& tap, ProcedureObject& object);
    void disarm(TapObject& tap, const ProcedureObject& object);
    void retarget(TapObject& tap, const std::string& output);
    void retire(TapObject& tap);

    // TapStreamsControl.cpp [locked]
    bool makeStreams(TapObject& tap, const std::string& output);
    void dropStreams();
    void restoreStreams();
    void routeAll();
    void route(TapObject& tap);
    [[nodiscard]] std::vector<std::uint32_t> wantedStreams(const TapObject& tap) const;
    [[nodiscard]] bool isRunning(std::uint32_t node) const;
    [[nodiscard]] bool hasRunningStream(const TapObject& tap) const;
    [[nodiscard]] bool playsOn(const TapObject& tap, std::string_view output) const;
    [[nodiscard]] bool isStalled(const TapObject& tap) const;
    void updateTimers();
    void beat();

    // TapHandover.cpp [locked exactly once]
    OSStatus handOver(TapObject& tap, ProcedureObject& object);
    OSStatus moveStreams(TapObject& tap, ProcedureObject& object, const std::string& output);
    OSStatus replaceStreams(TapObject& tap, ProcedureObject& object, const std::string& output);
    void fadeOut(TapObject& tap);

    // TapProperties.cpp
    [[nodiscard]] std::optional<PropertyBytes>
    property(AudioObjectID object, const AudioObjectPropertyAddress& address) const;
    [[nodiscard]] PropertyBytes tapFormat(const TapObject& tap) const;
    [[nodiscard]] std::optional<PropertyBytes>
    aggregateProperty(const AggregateObject& aggregate,
                      const AudioObjectPropertyAddress& address) const;
    [[nodiscard]] double now() const;

    Graph& graph_;
    Connection& connection_;
    ObjectIDs& ids_;
    ListenerTable& listeners_;
    const DeviceTable& devices_;
    ProcessTable& processes_;
    TapRouter router_;
    RetiredTaps retired_;
    std::map<AudioObjectID, TapObject> taps_;
    std::map<AudioObjectID, AggregateObject> aggregates_;
    std::map<IOProcID, std::unique_ptr<ProcedureObject>> procedures_;
    IOProcID nextProcedure_ = 1;
    std::uint64_t nextStreams_ = 1;
    bool isRefused_ = false; ///< the server has refused to let us route
    LoopTimer beatTimer_;
    LoopTimer retireTimer_;
};

} // namespace fadewell::pipewire
