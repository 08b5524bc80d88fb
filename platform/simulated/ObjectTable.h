#pragma once

#include "platform/simulated/SimulatedObject.h"

#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace fadewell {

/// The properties that changed, in order.
using PropertyChanges = std::vector<std::pair<AudioObjectID, AudioObjectPropertyAddress>>;

/// All objects of the sound system and their properties. Not synchronised.
///
/// What follows from other objects (lists, default devices, where a process plays) is kept up to
/// date by itself; every operation that changes something collects which properties changed.
class ObjectTable final {
public:
    ObjectTable();

    /// Ids rise and are never reused.
    AudioObjectID add(SimulatedDetail detail, PropertyChanges& changes);
    /// The first output and the first input become the defaults.
    AudioObjectID addDevice(const SimulatedDevice& device, PropertyChanges& changes);
    void remove(AudioObjectID id, PropertyChanges& changes);

    [[nodiscard]] bool contains(AudioObjectID id) const { return objects_.contains(id); }
    [[nodiscard]] const std::map<AudioObjectID, SimulatedObject>& all() const { return objects_; }
    [[nodiscard]] const SimulatedObject* find(AudioObjectID id) const;

    /// The object when it exists and is of this kind.
    template <class Detail>
    [[nodiscard]] Detail* get(AudioObjectID id)
    {
        const auto found = objects_.find(id);
        return found == objects_.end() ? nullptr : std::get_if<Detail>(&found->second.detail);
    }

    /// The object with this UID; 0 when there is none. Devices and aggregates, or taps.
    [[nodiscard]] AudioObjectID deviceForUID(std::string_view uid) const;
    [[nodiscard]] AudioObjectID tapForUUID(std::string_view uuid) const;

    /// A property as it reads at this uptime; absent when the object doesn't have it. Counts as a
    /// read for what becomes ready after some.
    [[nodiscard]] std::optional<PropertyValue>
    read(AudioObjectID id, const AudioObjectPropertyAddress& address, double now);
    [[nodiscard]] std::optional<bool> isSettable(AudioObjectID id,
                                                 const AudioObjectPropertyAddress& address) const;

    /// Writes a property, new or not. Equal values are no change.
    void put(AudioObjectID id,
             const AudioObjectPropertyAddress& address,
             PropertyValue value,
             PropertyChanges& changes);
    void
    erase(AudioObjectID id, const AudioObjectPropertyAddress& address, PropertyChanges& changes);

    void setDefaultOutput(AudioObjectID device, PropertyChanges& changes);
    void setDefaultInput(AudioObjectID device, PropertyChanges& changes);
    [[nodiscard]] AudioObjectID defaultOutput() const { return defaultOutput_; }

    /// Marks a device as no longer alive; a default moves on to the next device that can serve.
    void retire(AudioObjectID device, PropertyChanges& changes);

    /// Brings up to date what follows from the objects' details.
    void refresh(PropertyChanges& changes);

    /// Where the process plays now.
    [[nodiscard]] std::vector<AudioObjectID> outputDevices(const SimulatedProcess& process) const;
    [[nodiscard]] bool isAlive(AudioObjectID id) const;

private:
    [[nodiscard]] PropertyTable makeProperties(SimulatedDetail& detail);
    [[nodiscard]] std::vector<AudioObjectID> newStreams(std::uint32_t count);
    void refreshLists(PropertyChanges& changes);
    void
    refreshProcess(AudioObjectID id, const SimulatedProcess& process, PropertyChanges& changes);
    [[nodiscard]] AudioObjectID firstAliveDevice(std::uint32_t SimulatedDevice::*streams) const;
    [[nodiscard]] std::vector<AudioObjectID> aggregateStreams(const SimulatedAggregate& aggregate,
                                                              AudioObjectPropertyScope scope,
                                                              double now) const;

    std::map<AudioObjectID, SimulatedObject> objects_;
    AudioObjectID lastID_ = kAudioObjectSystemObject;
    AudioObjectID defaultOutput_ = 0;
    AudioObjectID defaultInput_ = 0;
};

} // namespace fadewell
