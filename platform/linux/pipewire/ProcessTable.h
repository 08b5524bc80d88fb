#pragma once

#include "audio/Tappability.h"
#include "platform/linux/ProcessIdentity.h"
#include "platform/linux/pipewire/DeviceTable.h"
#include "platform/linux/pipewire/Graph.h"
#include "platform/linux/pipewire/ListenerTable.h"
#include "platform/linux/pipewire/ObjectIDs.h"
#include "platform/linux/pipewire/ProcessPIDs.h"
#include "platform/linux/pipewire/PropertyValue.h"
#include "platform/linux/pipewire/StreamObserver.h"
#include "platform/linux/pipewire/StreamRules.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace fadewell::pipewire {

/// The processes with audio clients as objects with properties. Belongs to the connection's lock.
class ProcessTable final : private GraphObserver, private FrozenTime::Owner {
public:
    /// What a stream was aimed at before it was taken: absent when it isn't taken, empty when it
    /// followed the default, else the value of its target.
    using OwnTarget = std::function<std::optional<std::string>(std::uint32_t node)>;

    ProcessTable(Graph& graph,
                 ObjectIDs& ids,
                 ListenerTable& listeners,
                 DeviceTable& devices,
                 FrozenTime& frozen,
                 std::shared_ptr<ProcessIdentity> identity);
    ~ProcessTable() override;
    ProcessTable(const ProcessTable&) = delete;
    ProcessTable& operator=(const ProcessTable&) = delete;

    /// At most one observer; null for none. [locked]
    void setStreamObserver(StreamObserver* observer) { streamObserver_ = observer; }
    void setOwnTarget(OwnTarget ownTarget) { ownTarget_ = std::move(ownTarget); }

    /// Compares again where everybody plays: the journal changed. [locked]
    void refresh();

    /// In order of appearance. [locked]
    [[nodiscard]] const std::vector<AudioObjectID>& processIDs() const { return order_; }
    [[nodiscard]] bool owns(AudioObjectID object) const { return processes_.contains(object); }

    /// Absent for a property that processes don't have. Texts are not in here. [locked]
    [[nodiscard]] std::optional<PropertyBytes>
    value(AudioObjectID process, const AudioObjectPropertyAddress& address) const;
    [[nodiscard]] std::optional<std::string> bundleID(AudioObjectID process) const;
    [[nodiscard]] std::optional<std::int32_t> pid(AudioObjectID process) const;

    /// The graph ids of the process's streams that can be routed, oldest first. [locked]
    [[nodiscard]] std::vector<std::uint32_t> outputStreamNodes(AudioObjectID process) const;
    /// Whose stream this is, whatever kind of stream. [locked]
    [[nodiscard]] std::optional<AudioObjectID> processForNode(std::uint32_t node) const;

    /// Whose stream this is, as far as its client's description tells before its own has come.
    struct Owner {
        AudioObjectID process = 0;
        std::string appID; ///< empty when it belongs to no app
    };
    /// Absent while nothing is known of the client. [locked]
    [[nodiscard]] std::optional<Owner> ownerOf(const GraphClient& client);

    /// False also while nothing but its announcement is known. [locked]
    [[nodiscard]] bool isTappable(std::uint32_t node) const;
    /// The stream counts as one that can't be routed until it ends. [locked]
    void giveUp(std::uint32_t node);

    /// The processes whose streams play but can't be routed, each with its first reason. [locked]
    [[nodiscard]] std::vector<UntappableProcess> untappable() const;

private:
    struct Stream {
        std::uint64_t serial = 0;
        std::int32_t pid = 0;
        StreamKind kind = StreamKind::none;
        std::optional<UntappableReason> untappable;
        bool isRunning = false;
        bool isKnown = false;     ///< its own description has arrived
        AudioObjectID toldAs = 0; ///< the process that the observer knows it by
        /// It ran until its last link went, and counts as running until it does again or then.
        std::optional<double> movingUntil;

        [[nodiscard]] bool isTappable() const { return kind == StreamKind::output && !untappable; }
    };
    struct Process {
        std::int32_t pid = 0;
        std::optional<std::string> bundleID;
        bool isRunningOutput = false;
        bool isRunningInput = false;
        std::vector<AudioObjectID> outputDevices;
        bool isFrozen = false; ///< nothing of the above is taken back
    };

    void clientChanged(const GraphClient& client) override;
    void clientRemoved(const GraphClient& client) override;
    void nodeAppeared(const GraphNode& node) override { update(node); }
    void nodeChanged(const GraphNode& node) override { update(node); }
    void nodeRemoved(const GraphNode& node) override;
    void linkChanged(const GraphLink& link) override;
    void linkRemoved(const GraphLink& link) override;
    void metadataChanged(std::uint32_t subject,
                         const std::string& key,
                         const std::optional<std::string>& value) override;
    void metadataAvailable(bool isAvailable) override;
    void disconnected() override;
    void thaw() override;

    void freeze();
    [[nodiscard]] bool isLinked(std::uint32_t node) const;
    [[nodiscard]] bool isMoving(const Stream& stream) const;
    [[nodiscard]] std::optional<Stream> examine(const GraphNode& node);
    [[nodiscard]] bool isHeard(std::uint32_t node, const Stream& stream) const;
    void update(const GraphNode& node);
    void forget(std::uint32_t node);
    void appear(const GraphNode& node, std::int32_t pid);
    void dropUnclaimed();
    void tell(std::uint32_t node, Stream& stream);
    void refreshPID(std::int32_t pid);
    void refreshProcess(AudioObjectID object, Process& process);
    [[nodiscard]] std::vector<AudioObjectID> devicesOf(std::int32_t pid) const;
    [[nodiscard]] AudioObjectID deviceOf(std::uint32_t node) const;

    Graph& graph_;
    ObjectIDs& ids_;
    ListenerTable& listeners_;
    DeviceTable& devices_;
    FrozenTime& frozen_;
    std::shared_ptr<ProcessIdentity> identity_;
    StreamObserver* streamObserver_ = nullptr;
    OwnTarget ownTarget_;
    ProcessPIDs pids_;
    std::map<std::uint32_t, Stream> streams_; ///< by node
    std::set<std::uint32_t> givenUp_;         ///< nodes
    std::map<std::uint32_t, std::set<std::int32_t>> pidsOfClient_;
    std::map<AudioObjectID, Process> processes_;
    std::vector<AudioObjectID> order_;
    std::optional<double> frozenUntil_; ///< nobody whose process lives is dropped before
};

} // namespace fadewell::pipewire
