#include "platform/simulated/ObjectTable.h"

#include <algorithm>

namespace fadewell {
namespace {

constexpr AudioObjectPropertyAddress globalAddress(AudioObjectPropertySelector selector)
{
    return {selector, kAudioObjectPropertyScopeGlobal, kAudioObjectPropertyElementMain};
}

constexpr AudioObjectPropertyAddress streamsAddress(AudioObjectPropertyScope scope)
{
    return {kAudioDevicePropertyStreams, scope, kAudioObjectPropertyElementMain};
}

} // namespace

ObjectTable::ObjectTable()
{
    objects_[kAudioObjectSystemObject] = {SimulatedSystem{}, {}};
    PropertyChanges nobodyListens;
    put(kAudioObjectSystemObject,
        globalAddress(kAudioHardwarePropertyTranslateUIDToDevice),
        bytesOf(kAudioObjectUnknown),
        nobodyListens);
    refresh(nobodyListens);
}

AudioObjectID ObjectTable::add(SimulatedDetail detail, PropertyChanges& changes)
{
    const AudioObjectID id = ++lastID_;
    auto properties = makeProperties(detail);
    objects_[id] = {std::move(detail), std::move(properties)};
    refresh(changes);
    return id;
}

AudioObjectID ObjectTable::addDevice(const SimulatedDevice& device, PropertyChanges& changes)
{
    const AudioObjectID id = add(device, changes);
    if (defaultOutput_ == kAudioObjectUnknown && device.outputStreams > 0) {
        defaultOutput_ = id;
    }
    if (defaultInput_ == kAudioObjectUnknown && device.inputStreams > 0) {
        defaultInput_ = id;
    }
    refresh(changes);
    return id;
}

void ObjectTable::remove(AudioObjectID id, PropertyChanges& changes)
{
    if (id == kAudioObjectSystemObject || objects_.erase(id) == 0) {
        return;
    }
    refresh(changes);
}

const SimulatedObject* ObjectTable::find(AudioObjectID id) const
{
    const auto found = objects_.find(id);
    return found == objects_.end() ? nullptr : &found->second;
}

AudioObjectID ObjectTable::deviceForUID(std::string_view uid) const
{
    for (const auto& [id, object] : objects_) {
        const auto* device = std::get_if<SimulatedDevice>(&object.detail);
        const auto* aggregate = std::get_if<SimulatedAggregate>(&object.detail);
        if ((device && device->uid == uid) || (aggregate && aggregate->description.uid == uid)) {
            return id;
        }
    }
    return kAudioObjectUnknown;
}

AudioObjectID ObjectTable::tapForUUID(std::string_view uuid) const
{
    const auto found = std::ranges::find_if(objects_, [&](const auto& entry) {
        const auto* tap = std::get_if<SimulatedTap>(&entry.second.detail);
        return tap && tap->description.uuid == uuid;
    });
    return found == objects_.end() ? kAudioObjectUnknown : found->first;
}

std::optional<PropertyValue>
ObjectTable::read(AudioObjectID id, const AudioObjectPropertyAddress& address, double now)
{
    const auto* object = find(id);
    const auto* property = object ? object->properties.find(address) : nullptr;
    if (!property) {
        return std::nullopt;
    }
    if (auto* tap = get<SimulatedTap>(id); tap && address.mSelector == kAudioTapPropertyFormat) {
        auto format = tap->format.format;
        const bool isEarly = now < tap->madeAt + tap->format.secondsUntilReady;
        if (isEarly || tap->format.readsUntilReady > 0) {
            tap->format.readsUntilReady = std::max(tap->format.readsUntilReady - 1, 0);
            format.mSampleRate = 0;
        }
        return bytesOf(format);
    }
    if (const auto* aggregate = get<SimulatedAggregate>(id);
        aggregate && address.mSelector == kAudioDevicePropertyStreams)
    {
        return bytesOf(aggregateStreams(*aggregate, address.mScope, now));
    }
    return property->value;
}

std::optional<bool> ObjectTable::isSettable(AudioObjectID id,
                                            const AudioObjectPropertyAddress& address) const
{
    const auto* object = find(id);
    const auto* property = object ? object->properties.find(address) : nullptr;
    return property ? std::optional(property->isSettable) : std::nullopt;
}

void ObjectTable::put(AudioObjectID id,
                      const AudioObjectPropertyAddress& address,
                      PropertyValue value,
                      PropertyChanges& changes)
{
    const auto found = objects_.find(id);
    if (found == objects_.end()) {
        return;
    }
    auto& properties = found->second.properties;
    if (auto* property = properties.find(address)) {
        if (property->value == value) {
            return;
        }
        property->value = std::move(value);
    } else {
        properties.put(address, std::move(value));
    }
    changes.emplace_back(id, address);
}

void ObjectTable::erase(AudioObjectID id,
                        const AudioObjectPropertyAddress& address,
                        PropertyChanges& changes)
{
    const auto found = objects_.find(id);
    if (found != objects_.end() && found->second.properties.find(address)) {
        found->second.properties.erase(address);
        changes.emplace_back(id, address);
    }
}

void ObjectTable::setDefaultOutput(AudioObjectID device, PropertyChanges& changes)
{
    defaultOutput_ = device;
    refresh(changes);
}

void ObjectTable::setDefaultInput(AudioObjectID device, PropertyChanges& changes)
{
    defaultInput_ = device;
    refresh(changes);
}

void ObjectTable::retire(AudioObjectID device, PropertyChanges& changes)
{
    put(device,
        globalAddress(kAudioDevicePropertyDeviceIsAlive),
        bytesOf(std::uint32_t{0}),
        changes);
    if (auto* detail = get<SimulatedDevice>(device)) {
        detail->isAlive = false;
    }
    if (defaultOutput_ == device) {
        defaultOutput_ = firstAliveDevice(&SimulatedDevice::outputStreams);
    }
    if (defaultInput_ == device) {
        defaultInput_ = firstAliveDevice(&SimulatedDevice::inputStreams);
    }
    refresh(changes);
}

void ObjectTable::refresh(PropertyChanges& changes)
{
    refreshLists(changes);
    for (const auto& [id, object] : objects_) {
        if (const auto* process = std::get_if<SimulatedProcess>(&object.detail)) {
            refreshProcess(id, *process, changes);
        }
    }
}

std::vector<AudioObjectID> ObjectTable::outputDevices(const SimulatedProcess& process) const
{
    if (process.outputDevices) {
        return *process.outputDevices;
    }
    return defaultOutput_ != 0 ? std::vector{defaultOutput_} : std::vector<AudioObjectID>{};
}

bool ObjectTable::isAlive(AudioObjectID id) const
{
    const auto* object = find(id);
    const auto* property =
        object ? object->properties.find(globalAddress(kAudioDevicePropertyDeviceIsAlive))
               : nullptr;
    return property && property->value == PropertyValue(bytesOf(std::uint32_t{1}));
}

PropertyTable ObjectTable::makeProperties(SimulatedDetail& detail)
{
    PropertyTable table;
    if (const auto* process = std::get_if<SimulatedProcess>(&detail)) {
        table.put(globalAddress(kAudioProcessPropertyPID), bytesOf(process->pid));
        table.put(globalAddress(kAudioProcessPropertyBundleID), process->bundleID);
    } else if (const auto* device = std::get_if<SimulatedDevice>(&detail)) {
        table = propertiesOf(*device);
        table.put(streamsAddress(kAudioObjectPropertyScopeOutput),
                  bytesOf(newStreams(device->outputStreams)));
        table.put(streamsAddress(kAudioObjectPropertyScopeInput),
                  bytesOf(newStreams(device->inputStreams)));
    } else if (const auto* tap = std::get_if<SimulatedTap>(&detail)) {
        table.put(globalAddress(kAudioTapPropertyFormat), bytesOf(tap->format.format));
        // Read and written as a whole value, not as bytes.
        table.put(globalAddress(kAudioTapPropertyDescription), bytesOf(std::uint64_t{0}), true);
    } else if (auto* aggregate = std::get_if<SimulatedAggregate>(&detail)) {
        aggregate->inputStream = ++lastID_;
        aggregate->outputStream = ++lastID_;
        table = propertiesOf(SimulatedDevice{.uid = aggregate->description.uid,
                                             .name = aggregate->description.name,
                                             .transport = fourCharCode("grup")});
        table.put(streamsAddress(kAudioObjectPropertyScopeOutput), std::vector<std::byte>{});
        table.put(streamsAddress(kAudioObjectPropertyScopeInput), std::vector<std::byte>{});
    }
    return table;
}

std::vector<AudioObjectID> ObjectTable::newStreams(std::uint32_t count)
{
    std::vector<AudioObjectID> streams(count);
    std::ranges::generate(streams, [this] { return ++lastID_; });
    return streams;
}

void ObjectTable::refreshLists(PropertyChanges& changes)
{
    std::vector<AudioObjectID> processes;
    std::vector<AudioObjectID> devices;
    std::vector<AudioObjectID> taps;
    for (const auto& [id, object] : objects_) {
        if (std::holds_alternative<SimulatedProcess>(object.detail)) {
            processes.push_back(id);
        } else if (std::holds_alternative<SimulatedTap>(object.detail)) {
            taps.push_back(id);
        } else if (!std::holds_alternative<SimulatedSystem>(object.detail)) {
            devices.push_back(id);
        }
    }
    const auto list = [&](AudioObjectPropertySelector selector, std::vector<std::byte> bytes) {
        put(kAudioObjectSystemObject, globalAddress(selector), std::move(bytes), changes);
    };
    list(kAudioHardwarePropertyProcessObjectList, bytesOf(processes));
    list(kAudioHardwarePropertyDevices, bytesOf(devices));
    list(kAudioHardwarePropertyTapList, bytesOf(taps));
    list(kAudioHardwarePropertyDefaultOutputDevice, bytesOf(defaultOutput_));
    list(kAudioHardwarePropertyDefaultInputDevice, bytesOf(defaultInput_));
}

void ObjectTable::refreshProcess(AudioObjectID id,
                                 const SimulatedProcess& process,
                                 PropertyChanges& changes)
{
    const auto flag = [&](AudioObjectPropertySelector selector, bool isOn) {
        put(id, globalAddress(selector), bytesOf(std::uint32_t{isOn}), changes);
    };
    const auto before = changes.size();
    flag(kAudioProcessPropertyIsRunningOutput, process.isRunningOutput);
    flag(kAudioProcessPropertyIsRunningInput, process.isRunningInput);
    const bool hasChanged = changes.size() > before;
    // Told of either direction, also where it goes on running in the other one.
    PropertyChanges toldBelow;
    put(id,
        globalAddress(kAudioProcessPropertyIsRunning),
        bytesOf(std::uint32_t{process.isRunningOutput || process.isRunningInput}),
        toldBelow);
    if (hasChanged) {
        changes.emplace_back(id, globalAddress(kAudioProcessPropertyIsRunning));
    }
    put(id,
        {kAudioProcessPropertyDevices, kAudioObjectPropertyScopeOutput, 0},
        bytesOf(outputDevices(process)),
        changes);
}

AudioObjectID ObjectTable::firstAliveDevice(std::uint32_t SimulatedDevice::*streams) const
{
    const auto found = std::ranges::find_if(objects_, [&](const auto& entry) {
        const auto* device = std::get_if<SimulatedDevice>(&entry.second.detail);
        return device && device->isAlive && device->*streams > 0;
    });
    return found == objects_.end() ? kAudioObjectUnknown : found->first;
}

std::vector<AudioObjectID> ObjectTable::aggregateStreams(const SimulatedAggregate& aggregate,
                                                         AudioObjectPropertyScope scope,
                                                         double now) const
{
    const auto& description = aggregate.description;
    const bool hasTap = std::ranges::any_of(description.taps, [this](const auto& tap) {
        return tapForUUID(tap.uid) != kAudioObjectUnknown;
    });
    const bool hasDevice = isAlive(deviceForUID(description.master));
    const double age = now - aggregate.madeAt;
    std::vector<AudioObjectID> streams;
    if (scope != kAudioObjectPropertyScopeOutput && hasTap && age >= aggregate.readiness.inputAfter)
    {
        streams.push_back(aggregate.inputStream);
    }
    if (scope != kAudioObjectPropertyScopeInput && hasDevice &&
        age >= aggregate.readiness.outputAfter) {
        streams.push_back(aggregate.outputStream);
    }
    return streams;
}

} // namespace fadewell
