#pragma once

#include "platform/linux/pipewire/FrozenTime.h"
#include "platform/linux/pipewire/Graph.h"
#include "platform/linux/pipewire/ListenerTable.h"
#include "platform/linux/pipewire/MissingDefaults.h"
#include "platform/linux/pipewire/ObjectIDs.h"
#include "platform/linux/pipewire/PropertyValue.h"
#include "platform/linux/pipewire/RouteKeeping.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace fadewell::pipewire {

/// The sinks and sources as devices with properties. Belongs to the connection's lock.
///
/// A device whose node went, and a default without its session manager, are frozen: they answer as
/// before until they are back or the frozen time is over. A device that went for good stays
/// readable as one that isn't alive, so that whoever is told so can ask; when its name comes back
/// it is the same object again, and gets back what was written to it.
class DeviceTable final : private GraphObserver, private FrozenTime::Owner {
public:
    DeviceTable(Graph& graph, ObjectIDs& ids, ListenerTable& listeners, FrozenTime& frozen);
    ~DeviceTable() override;
    DeviceTable(const DeviceTable&) = delete;
    DeviceTable& operator=(const DeviceTable&) = delete;

    /// Called on the loop thread, locked, after devices, the default output or a rate changed; for
    /// as long as the table lives.
    void onChanged(std::function<void()> changed) { changed_.push_back(std::move(changed)); }

    /// Those that are there or frozen, in order of appearance. [locked]
    [[nodiscard]] const std::vector<AudioObjectID>& deviceIDs() const { return order_; }
    /// Also true for one that went. [locked]
    [[nodiscard]] bool owns(AudioObjectID object) const { return devices_.contains(object); }

    /// 0 when there is none. [locked]
    [[nodiscard]] AudioObjectID defaultOutput() const { return defaultOutput_.device; }
    [[nodiscard]] AudioObjectID defaultInput() const { return defaultInput_.device; }
    /// What the session manager calls the default, whether or not it is there; empty for none.
    [[nodiscard]] const std::string& defaultSinkName() const { return defaultSinkName_; }
    /// There are outputs, or inputs, and none of them is what the session manager last called the
    /// default: a change of it was kept from us. What monitors an output is no input. [locked]
    [[nodiscard]] bool isDefaultMissing() const;

    /// Absent or 0 for devices that aren't there. [locked]
    [[nodiscard]] std::optional<std::string> nodeNameForDevice(AudioObjectID device) const;
    [[nodiscard]] std::optional<AudioObjectID> deviceForNodeName(std::string_view name) const;
    /// By what a stream's target says: a serial or a name. [locked]
    [[nodiscard]] std::optional<AudioObjectID> deviceForTarget(const std::string& target) const;
    /// Absent for a frozen device too.
    [[nodiscard]] std::optional<std::uint32_t> nodeForDevice(AudioObjectID device) const;

    /// The rate that the graph runs at, or ran at when the server went, in Hz. [locked]
    [[nodiscard]] double graphRate() const { return graphRate_; }

    /// Absent for a property that the device doesn't have. Texts are not in here. [locked]
    [[nodiscard]] std::optional<PropertyBytes>
    value(AudioObjectID device, const AudioObjectPropertyAddress& address) const;
    /// 'uid ' and 'lnam'; absent for any other. [locked]
    [[nodiscard]] std::optional<std::string> text(AudioObjectID device,
                                                  AudioObjectPropertySelector selector) const;

    [[nodiscard]] bool isSettable(AudioObjectID device,
                                  const AudioObjectPropertyAddress& address) const;
    /// Whether set() is of use though the device isn't there: it remembers. [locked]
    [[nodiscard]] bool takesLater(AudioObjectID device) const
    {
        return alive(device) == nullptr && written_.contains(device);
    }
    /// Sends a microphone's volume (0 to 1) or mute switch; one that isn't there gets it when it is
    /// found again. [locked]
    OSStatus set(AudioObjectID device,
                 const AudioObjectPropertyAddress& address,
                 std::span<const std::byte> data);

private:
    struct Device {
        std::uint32_t node = SPA_ID_INVALID;
        std::uint64_t serial = 0; ///< of the node, also while that is gone
        std::string uid;
        std::string name;
        bool isAlive = false;
        std::optional<double> frozenUntil; ///< the node is gone, and this is when that is told
        bool hasRoute = false;             ///< a card's active route leads to it
        bool isWritable = false;
        std::uint32_t transport = 0;
        std::optional<std::uint32_t> dataSource;
        double rate = 0;
        NodeVolume volume;
        std::vector<AudioObjectID> outputStreams;
        std::vector<AudioObjectID> inputStreams;
    };
    struct Default {
        AudioObjectID device = kAudioObjectUnknown;
        std::optional<double> frozenUntil; ///< what the session manager names doesn't count so long
    };
    /// What was written to a device, or what became of it since.
    struct Written {
        NodeVolume volume;
        bool isOnRoute = false;
        RouteKeeping keeping{};
        bool isDue = false; ///< to be written again when the device is found
        /// What the server told of the device before it was written, until it tells something else.
        std::optional<NodeVolume> toldBefore;
        /// While it isn't over, what the session manager recalls of the device is put right, once.
        std::optional<double> recallsUntil;
    };

    void nodeChanged(const GraphNode& node) override;
    void nodeRemoved(const GraphNode& node) override;
    void deviceChanged(const GraphDevice& device) override;
    void metadataChanged(std::uint32_t subject,
                         const std::string& key,
                         const std::optional<std::string>& value) override;
    void settingsChanged() override;
    void metadataAvailable(bool isAvailable) override;
    void disconnected() override;

    [[nodiscard]] static bool isDevice(const GraphNode& node);
    /// Takes over what is told of the node; `isForced` also when a frozen device isn't told whole.
    void update(const GraphNode& node, bool isForced = false);
    [[nodiscard]] Device describe(const GraphNode& node);
    [[nodiscard]] const GraphRoute* routeOf(const GraphNode& node, bool isOutput) const;
    void announce(AudioObjectID object, const Device& before, const Device& after);
    void tellChanged();

    // DeviceLosses.cpp
    void thaw() override;
    [[nodiscard]] bool isFrozen(AudioObjectID device) const;
    void freeze(AudioObjectID object, double until);
    void lose(AudioObjectID object);
    [[nodiscard]] bool isAsComplete(const GraphNode& node, const Device& before) const;
    void refreshDefaults();
    [[nodiscard]] bool refreshDefault(Default& chosen, AudioObjectID named);
    void remember(AudioObjectID object, const NodeVolume& wanted);
    void follow(AudioObjectID object, const GraphNode& node);
    [[nodiscard]] bool putRight(AudioObjectID object, Written& written, const GraphNode& node);
    [[nodiscard]] bool giveBack(AudioObjectID object, const GraphNode& node);

    [[nodiscard]] AudioObjectID withScope(std::string_view name,
                                          std::vector<AudioObjectID> Device::*streams) const;
    [[nodiscard]] const Device* alive(AudioObjectID device) const;
    [[nodiscard]] static std::vector<AudioObjectID> streams(const Device& device,
                                                            AudioObjectPropertyScope scope);
    [[nodiscard]] static std::optional<PropertyBytes>
    inputValue(const Device& device, const AudioObjectPropertyAddress& address);
    [[nodiscard]] static OSStatus parse(const Device& device,
                                        AudioObjectPropertySelector selector,
                                        std::span<const std::byte> data,
                                        NodeVolume& wanted);
    OSStatus apply(AudioObjectID object, const NodeVolume& wanted);
    int write(AudioObjectID object, std::uint32_t nodeID, const NodeVolume& wanted);

    Graph& graph_;
    ObjectIDs& ids_;
    ListenerTable& listeners_;
    FrozenTime& frozen_;
    std::vector<std::function<void()>> changed_;
    std::map<AudioObjectID, Device> devices_;
    std::map<AudioObjectID, Written> written_;
    std::vector<AudioObjectID> order_;
    Default defaultOutput_;
    Default defaultInput_;
    MissingDefaults missing_;
    std::string defaultSinkName_;
    std::string defaultSourceName_;
    double graphRate_ = 48000;
};

} // namespace fadewell::pipewire
