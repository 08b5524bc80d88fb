#pragma once

#include "platform/linux/pipewire/Graph.h"
#include "platform/linux/pipewire/ListenerTable.h"
#include "platform/linux/pipewire/ObjectIDs.h"
#include "platform/linux/pipewire/PropertyValue.h"

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
/// A device that went stays readable as one that isn't alive, so that whoever is told so can ask;
/// when its name comes back it is the same object again.
class DeviceTable final : private GraphObserver {
public:
    DeviceTable(Graph& graph, ObjectIDs& ids, ListenerTable& listeners);
    ~DeviceTable() override;
    DeviceTable(const DeviceTable&) = delete;
    DeviceTable& operator=(const DeviceTable&) = delete;

    /// Called on the loop thread, locked, after devices, the default output or a rate changed; for
    /// as long as the table lives.
    void onChanged(std::function<void()> changed) { changed_.push_back(std::move(changed)); }

    /// Those that are there, in order of appearance. [locked]
    [[nodiscard]] const std::vector<AudioObjectID>& deviceIDs() const { return order_; }
    /// Also true for one that went. [locked]
    [[nodiscard]] bool owns(AudioObjectID object) const { return devices_.contains(object); }

    /// 0 when there is none. [locked]
    [[nodiscard]] AudioObjectID defaultOutput() const { return defaultOutput_; }
    [[nodiscard]] AudioObjectID defaultInput() const { return defaultInput_; }
    /// What the session manager calls the default, whether or not it is there; empty for none.
    [[nodiscard]] const std::string& defaultSinkName() const { return defaultSinkName_; }

    /// Absent or 0 for devices that aren't there. [locked]
    [[nodiscard]] std::optional<std::string> nodeNameForDevice(AudioObjectID device) const;
    [[nodiscard]] std::optional<AudioObjectID> deviceForNodeName(std::string_view name) const;
    [[nodiscard]] std::optional<std::uint32_t> nodeForDevice(AudioObjectID device) const;

    /// The rate that the graph runs at, in Hz. [locked]
    [[nodiscard]] double graphRate() const;

    /// Absent for a property that the device doesn't have. Texts are not in here. [locked]
    [[nodiscard]] std::optional<PropertyBytes>
    value(AudioObjectID device, const AudioObjectPropertyAddress& address) const;
    /// 'uid ' and 'lnam'; absent for any other. [locked]
    [[nodiscard]] std::optional<std::string> text(AudioObjectID device,
                                                  AudioObjectPropertySelector selector) const;

    [[nodiscard]] bool isSettable(AudioObjectID device,
                                  const AudioObjectPropertyAddress& address) const;
    /// Sends a microphone's volume (0 to 1) or mute switch. [locked]
    OSStatus set(AudioObjectID device,
                 const AudioObjectPropertyAddress& address,
                 std::span<const std::byte> data);

private:
    struct Device {
        std::uint32_t node = SPA_ID_INVALID;
        std::string uid;
        std::string name;
        bool isAlive = false;
        std::uint32_t transport = 0;
        std::optional<std::uint32_t> dataSource;
        double rate = 0;
        NodeVolume volume;
        std::vector<AudioObjectID> outputStreams;
        std::vector<AudioObjectID> inputStreams;
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

    void update(const GraphNode& node);
    void lose(AudioObjectID object);
    [[nodiscard]] Device describe(const GraphNode& node);
    [[nodiscard]] const GraphRoute* routeOf(const GraphNode& node, bool isOutput) const;
    void announce(AudioObjectID object, const Device& before, const Device& after);
    void refreshDefaults();
    void tellChanged();
    [[nodiscard]] AudioObjectID withScope(std::string_view name,
                                          std::vector<AudioObjectID> Device::*streams) const;
    [[nodiscard]] const Device* alive(AudioObjectID device) const;
    [[nodiscard]] static std::vector<AudioObjectID> streams(const Device& device,
                                                            AudioObjectPropertyScope scope);
    [[nodiscard]] static std::optional<PropertyBytes>
    inputValue(const Device& device, const AudioObjectPropertyAddress& address);
    int write(std::uint32_t nodeID, const NodeVolume& wanted);

    Graph& graph_;
    ObjectIDs& ids_;
    ListenerTable& listeners_;
    std::vector<std::function<void()>> changed_;
    std::map<AudioObjectID, Device> devices_;
    std::vector<AudioObjectID> order_;
    AudioObjectID defaultOutput_ = kAudioObjectUnknown;
    AudioObjectID defaultInput_ = kAudioObjectUnknown;
    std::string defaultSinkName_;
};

} // namespace fadewell::pipewire
