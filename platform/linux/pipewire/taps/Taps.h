#pragma once

#include "audio/AudioHardware.h"
#include "audio/StartGate.h"
#include "base/Clock.h"
#include "platform/linux/pipewire/DeviceTable.h"
#include "platform/linux/pipewire/Graph.h"
#include "platform/linux/pipewire/GraphObserver.h"
#include "platform/linux/pipewire/ListenerTable.h"
#include "platform/linux/pipewire/LoopTimer.h"
#include "platform/linux/pipewire/ObjectIDs.h"
#include "platform/linux/pipewire/ProcessTable.h"
#include "platform/linux/pipewire/PropertyValue.h"
#include "platform/linux/pipewire/StreamObserver.h"
#include "platform/linux/pipewire/taps/ConverterWaker.h"
#include "platform/linux/pipewire/taps/LeftoverTaps.h"
#include "platform/linux/pipewire/taps/RetiredTaps.h"
#include "platform/linux/pipewire/taps/StandingTaps.h"
#include "platform/linux/pipewire/taps/StartLevels.h"
#include "platform/linux/pipewire/taps/Starts.h"
#include "platform/linux/pipewire/taps/TapObjects.h"
#include "platform/linux/pipewire/taps/TapRouter.h"
#include "platform/linux/pipewire/taps/TargetJournal.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
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
    /// The journal of the streams' own targets is kept in `journalFolder`; empty: not kept.
    Taps(Graph& graph,
         ObjectIDs& ids,
         ListenerTable& listeners,
         const DeviceTable& devices,
         ProcessTable& processes,
         std::filesystem::path journalFolder);
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

    // As StartGate has them.
    void setGatedApps(std::vector<GatedApp> apps);
    void setLoweredStarts(std::optional<LoweredStarts> lowered);

    /// Outputs came or went: apps that were chosen to play there are sent to it, or to another
    /// one, also those that are not the engine's at the moment.
    /// [locked]
    void followDevices();

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
    /// A stream that was led to its tap, or to that of its app, before anybody else knew it.
    struct Announced {
        AudioObjectID process = 0;
        std::string appID;
    };

    void clientChanged(const GraphClient& client) override;
    void clientRemoved(const GraphClient& client) override;
    void nodeAppeared(const GraphNode& node) override;
    void nodeChanged(const GraphNode& node) override;
    void nodeRemoved(const GraphNode& node) override;
    void linkChanged(const GraphLink& link) override;
    void linkRemoved(const GraphLink& link) override;
    void settingsChanged() override;
    void metadataChanged(std::uint32_t subject,
                         const std::string& key,
                         const std::optional<std::string>& value) override;
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
    void arm(TapObject& tap, ProcedureObject& object);
    void disarm(TapObject& tap, ProcedureObject& object);
    void retarget(TapObject& tap, const std::string& output);
    void retire(TapObject& tap);
    void retire(AudioObjectID tap, std::unique_ptr<TapStreams> streams);
    void updateLeftover(std::uint32_t node);

    // TapPermission.cpp [locked]
    [[nodiscard]] bool isCapturePermitted() const;
    [[nodiscard]] bool askForPermission(); ///< [locked exactly once]

    // TapStarts.cpp [locked]
    [[nodiscard]] StandingTaps::Host standingHost();
    [[nodiscard]] std::optional<Announced> ownerOf(const GraphNode& stream);
    [[nodiscard]] const TapObject* tapFor(const Announced& owner) const;
    void announce(const GraphNode& node);
    /// Its client may begin another stream at once.
    void expectAnother(const GraphNode& ended);
    [[nodiscard]] std::optional<Starts::Target> startTarget(std::uint32_t node);
    [[nodiscard]] static bool carries(const TapObject& tap);
    [[nodiscard]] bool isExpected(const std::string& appID) const;
    [[nodiscard]] bool isConcerned(const std::string& appID) const;
    [[nodiscard]] std::string appOf(const TapObject& tap) const;
    bool adopt(TapObject& tap, const std::string& output);
    bool standBy(TapObject& tap);
    void setStandIn(TapObject& tap, ProcedureObject& previous);

    // TapStreamsControl.cpp [locked]
    [[nodiscard]] std::unique_ptr<TapStreams>
    newStreams(const std::string& title, const std::string& output, bool listensOnly);
    [[nodiscard]] std::unique_ptr<TapStreams> newStandingStreams(const std::string& output);
    void streamsChanged(AudioObjectID tap);
    bool makeStreams(TapObject& tap, const std::string& output);
    void routeAll();
    void route(TapObject& tap);
    /// Whether the tap runs, if it is going to.
    [[nodiscard]] bool isRunUp(const TapObject& tap);
    /// Links that are heard change at a quiet moment; false: not now, but soon again.
    [[nodiscard]] bool isQuietMoment(const TapStreams& streams);
    [[nodiscard]] std::vector<std::uint32_t> wantedStreams(const TapObject& tap) const;
    [[nodiscard]] bool isRunning(std::uint32_t node) const;
    [[nodiscard]] bool hasRunningStream(const TapObject& tap) const;
    [[nodiscard]] bool playsOn(const TapObject& tap, std::string_view output) const;
    [[nodiscard]] bool isStalled(const TapObject& tap) const;
    void updateTimers();
    void beat();

    // TapOutage.cpp [locked]
    [[nodiscard]] bool canPlay(const std::string& output) const;
    void dropStreams();
    void restoreStreams();
    void relink();
    void removeSecondLinks();
    void retakeStreams();
    void lookForAstray();
    void
    replace(AudioObjectID id, std::unique_ptr<TapStreams>& fresh, std::unique_ptr<TapStreams> old);
    void forEachStreams(const std::function<void(TapStreams&)>& call);
    [[nodiscard]] bool isAnyAstray(AudioObjectID tap, std::uint32_t capture) const;

    // TapHandover.cpp [locked exactly once]
    OSStatus handOver(TapObject& tap, ProcedureObject& object);
    OSStatus moveStreams(TapObject& tap, ProcedureObject& object, const std::string& output);
    OSStatus replaceStreams(TapObject& tap, ProcedureObject& object, const std::string& output);
    void takeOver(TapObject& tap, ProcedureObject& object, const std::string& output);
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
    TargetJournal journal_;
    LeftoverTaps leftovers_;
    TapRouter router_;
    RetiredTaps retired_;
    StartLevels levels_;
    Starts starts_;
    StandingTaps standing_;
    CycleKeeper keeper_;
    ConverterWaker waker_;
    std::map<std::uint32_t, Announced> announced_; ///< by node
    std::map<std::uint32_t, Announced> clients_;   ///< who they are, by client
    std::map<AudioObjectID, TapObject> taps_;
    std::map<AudioObjectID, AggregateObject> aggregates_;
    std::map<IOProcID, std::unique_ptr<ProcedureObject>> procedures_;
    IOProcID nextProcedure_ = 1;
    std::uint64_t nextStreams_ = 1;
    bool isRefused_ = false; ///< the server has refused to let us route
    LoopTimer beatTimer_;
    LoopTimer retireTimer_;
    LoopTimer quietTimer_;
    LoopTimer relinkTimer_;
    std::set<AudioObjectID> astray_;      ///< the taps, as of the last look
    std::set<std::uint32_t> secondLinks_; ///< as seen at the last look
    int relinkTicks_ = 0;
    int relinks_ = 0;
};

} // namespace fadewell::pipewire
