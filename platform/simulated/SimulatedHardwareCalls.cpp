#include "platform/simulated/SimulatedHardware.h"

#include <algorithm>
#include <utility>

// The calls of AudioHardware; see SimulatedHardware.cpp for what tests script.

namespace fadewell {

OSStatus SimulatedHardware::perform(CallRecord record,
                                    const std::function<OSStatus(Locked&)>& work,
                                    AudioObjectID* made)
{
    const auto fault = faults_.take(record.call, record.address.mSelector, record.object);
    if (fault && fault->delay > 0) {
        queue_->clock().sleep(fault->delay);
    }
    if (fault && (fault->status != 0 || fault->givesNothing)) {
        record.status = fault->status;
    } else {
        change([&](Locked& locked) {
            if (fault && fault->objectVanishes) {
                destroyAggregate(record.object, locked);
                objects_.remove(record.object, locked.changes);
            }
            record.status = work(locked);
        });
    }
    if (made && record.status == 0) {
        record.object = *made;
    }
    calls_.add(record);
    return record.status;
}

OSStatus SimulatedHardware::read(const CallRecord& record,
                                 const std::function<OSStatus(const PropertyValue&)>& use)
{
    return perform(record, [&](Locked&) {
        if (!objects_.contains(record.object)) {
            return kAudioHardwareBadObjectError;
        }
        const auto value = objects_.read(record.object, record.address, queue_->clock().uptime());
        return value ? use(*value) : kAudioHardwareUnknownPropertyError;
    });
}

bool SimulatedHardware::has(AudioObjectID object, const AudioObjectPropertyAddress& address)
{
    bool found = false;
    const OSStatus status = perform({HardwareCall::has, object, address}, [&](Locked&) {
        found = objects_.isSettable(object, address).has_value();
        return kAudioHardwareNoError;
    });
    return found && status == kAudioHardwareNoError;
}

OSStatus SimulatedHardware::isSettable(AudioObjectID object,
                                       const AudioObjectPropertyAddress& address,
                                       bool& settable)
{
    settable = false;
    return perform({HardwareCall::isSettable, object, address}, [&](Locked&) {
        const auto known = objects_.isSettable(object, address);
        settable = known.value_or(false);
        if (known) {
            return kAudioHardwareNoError;
        }
        return objects_.contains(object) ? kAudioHardwareUnknownPropertyError
                                         : kAudioHardwareBadObjectError;
    });
}

OSStatus SimulatedHardware::dataSize(AudioObjectID object,
                                     const AudioObjectPropertyAddress& address,
                                     std::uint32_t& size)
{
    size = 0;
    return read({HardwareCall::dataSize, object, address}, [&](const PropertyValue& value) {
        const auto* bytes = std::get_if<std::vector<std::byte>>(&value);
        // A text is read as a reference, which is as big as a pointer.
        size = bytes ? static_cast<std::uint32_t>(bytes->size()) : 8;
        return kAudioHardwareNoError;
    });
}

OSStatus SimulatedHardware::getData(AudioObjectID object,
                                    const AudioObjectPropertyAddress& address,
                                    std::span<std::byte> data,
                                    std::uint32_t& used)
{
    used = 0;
    return read({HardwareCall::getData, object, address}, [&](const PropertyValue& value) {
        const auto* bytes = std::get_if<std::vector<std::byte>>(&value);
        const bool needsMore = address.mSelector == kAudioTapPropertyDescription ||
                               address.mSelector == kAudioHardwarePropertyTranslateUIDToDevice;
        if (!bytes || needsMore) {
            return kAudioHardwareIllegalOperationError;
        }
        const auto count = std::min(bytes->size(), data.size());
        std::copy_n(bytes->begin(), count, data.begin());
        used = static_cast<std::uint32_t>(count);
        return kAudioHardwareNoError;
    });
}

OSStatus SimulatedHardware::setData(AudioObjectID object,
                                    const AudioObjectPropertyAddress& address,
                                    std::span<const std::byte> data)
{
    return perform({HardwareCall::setData, object, address},
                   [&](Locked& locked) { return write(object, address, data, locked); });
}

OSStatus SimulatedHardware::write(AudioObjectID object,
                                  const AudioObjectPropertyAddress& address,
                                  std::span<const std::byte> data,
                                  Locked& locked)
{
    const auto* found = objects_.find(object);
    if (!found) {
        return kAudioHardwareBadObjectError;
    }
    const auto* property = found->properties.find(address);
    if (!property) {
        return kAudioHardwareUnknownPropertyError;
    }
    const auto* bytes = std::get_if<std::vector<std::byte>>(&property->value);
    if (!property->isSettable || !bytes || address.mSelector == kAudioTapPropertyDescription) {
        return kAudioHardwareIllegalOperationError;
    }
    if (bytes->size() != data.size()) {
        return kAudioHardwareBadPropertySizeError;
    }
    objects_.put(object, address, std::vector(data.begin(), data.end()), locked.changes);
    return kAudioHardwareNoError;
}

OSStatus SimulatedHardware::getString(AudioObjectID object,
                                      const AudioObjectPropertyAddress& address,
                                      std::optional<std::string>& text)
{
    text.reset();
    return read({HardwareCall::getString, object, address}, [&](const PropertyValue& value) {
        const auto* stored = std::get_if<std::optional<std::string>>(&value);
        if (!stored) {
            return kAudioHardwareIllegalOperationError;
        }
        text = *stored;
        return kAudioHardwareNoError;
    });
}

OSStatus SimulatedHardware::deviceForUID(std::string_view uid, AudioObjectID& device)
{
    device = kAudioObjectUnknown;
    return perform({HardwareCall::deviceForUID, kAudioObjectSystemObject}, [&](Locked&) {
        device = objects_.deviceForUID(uid);
        return kAudioHardwareNoError;
    });
}

OSStatus SimulatedHardware::tapDescription(AudioObjectID tap, TapDescription& description)
{
    return perform({HardwareCall::tapDescription, tap}, [&](Locked&) {
        const auto* detail = objects_.get<SimulatedTap>(tap);
        if (!detail) {
            return kAudioHardwareBadObjectError;
        }
        description = detail->description;
        return kAudioHardwareNoError;
    });
}

OSStatus SimulatedHardware::setTapDescription(AudioObjectID tap, const TapDescription& description)
{
    return perform({HardwareCall::setTapDescription, tap}, [&](Locked&) {
        auto* detail = objects_.get<SimulatedTap>(tap);
        if (!detail) {
            return kAudioHardwareBadObjectError;
        }
        if (!isCapturePermitted_) {
            return kAudioDevicePermissionsError;
        }
        const std::string uuid = detail->description.uuid;
        detail->description = description;
        // What a tap is found by stays, unless another is named.
        if (description.uuid.empty()) {
            detail->description.uuid = uuid;
        }
        return kAudioHardwareNoError;
    });
}

OSStatus SimulatedHardware::addListener(AudioObjectID object,
                                        const AudioObjectPropertyAddress& address,
                                        std::shared_ptr<SerialQueue> queue,
                                        std::function<void()> changed,
                                        ListenerToken& token)
{
    token = 0;
    return perform({HardwareCall::addListener, object, address}, [&](Locked&) {
        if (!objects_.contains(object)) {
            return kAudioHardwareBadObjectError;
        }
        if (!objects_.isSettable(object, address)) {
            return kAudioHardwareUnknownPropertyError;
        }
        token = listeners_.add({object, address, std::move(queue), std::move(changed)});
        return kAudioHardwareNoError;
    });
}

OSStatus SimulatedHardware::removeListener(ListenerToken token)
{
    return perform({HardwareCall::removeListener}, [&](Locked&) {
        return listeners_.remove(token) ? kAudioHardwareNoError : kAudioHardwareBadObjectError;
    });
}

OSStatus SimulatedHardware::createProcessTap(const TapDescription& description, AudioObjectID& tap)
{
    tap = kAudioObjectUnknown;
    const auto make = [&](Locked& locked) {
        tap = makeTap(description, locked);
        return kAudioHardwareNoError;
    };
    return perform({HardwareCall::createProcessTap}, make, &tap);
}

OSStatus SimulatedHardware::destroyProcessTap(AudioObjectID tap)
{
    return perform({HardwareCall::destroyProcessTap, tap}, [&](Locked& locked) {
        if (!objects_.get<SimulatedTap>(tap)) {
            return kAudioHardwareBadObjectError;
        }
        objects_.remove(tap, locked.changes);
        return kAudioHardwareNoError;
    });
}

OSStatus SimulatedHardware::createAggregateDevice(const AggregateDescription& description,
                                                  AudioObjectID& device)
{
    device = kAudioObjectUnknown;
    const auto make = [&](Locked& locked) {
        // A UID names one device.
        if (objects_.deviceForUID(description.uid) != kAudioObjectUnknown) {
            return kAudioHardwareIllegalOperationError;
        }
        device = makeAggregate(description, locked);
        return kAudioHardwareNoError;
    };
    return perform({HardwareCall::createAggregateDevice}, make, &device);
}

OSStatus SimulatedHardware::destroyAggregateDevice(AudioObjectID device)
{
    return perform({HardwareCall::destroyAggregateDevice, device}, [&](Locked& locked) {
        if (!objects_.get<SimulatedAggregate>(device)) {
            return kAudioHardwareBadObjectError;
        }
        destroyAggregate(device, locked);
        return kAudioHardwareNoError;
    });
}

OSStatus SimulatedHardware::createIOProc(AudioObjectID device,
                                         AudioDeviceIOProc procedure,
                                         void* client,
                                         IOProcID& id)
{
    id = 0;
    return perform({HardwareCall::createIOProc, device}, [&](Locked&) {
        if (!objects_.get<SimulatedDevice>(device) && !objects_.get<SimulatedAggregate>(device)) {
            return kAudioHardwareBadDeviceError;
        }
        if (!procedure) {
            return kAudioHardwareIllegalOperationError;
        }
        id = ++lastProcedure_;
        procedures_[id] =
            std::make_shared<SimulatedProcedure>(SimulatedProcedure{device, id, procedure, client});
        return kAudioHardwareNoError;
    });
}

OSStatus SimulatedHardware::destroyIOProc(AudioObjectID device, IOProcID id)
{
    return perform({HardwareCall::destroyIOProc, device}, [&](Locked& locked) {
        if (!findProcedure(device, id)) {
            return kAudioHardwareBadDeviceError;
        }
        dropProcedure(id, locked);
        return kAudioHardwareNoError;
    });
}

OSStatus SimulatedHardware::start(AudioObjectID device, IOProcID id)
{
    return perform({HardwareCall::start, device}, [&](Locked&) {
        auto* found = findProcedure(device, id);
        const auto* aggregate = objects_.get<SimulatedAggregate>(device);
        const bool canPlay = objects_.isAlive(
            aggregate ? objects_.deviceForUID(aggregate->description.master) : device);
        if (!found || !canPlay) {
            return kAudioHardwareBadDeviceError;
        }
        found->isStarted = true;
        return kAudioHardwareNoError;
    });
}

OSStatus SimulatedHardware::stop(AudioObjectID device, IOProcID id)
{
    return perform({HardwareCall::stop, device}, [&](Locked&) {
        auto* found = findProcedure(device, id);
        if (!found) {
            return kAudioHardwareBadDeviceError;
        }
        found->isStarted = false;
        return kAudioHardwareNoError;
    });
}

SimulatedProcedure* SimulatedHardware::findProcedure(AudioObjectID device, IOProcID id)
{
    const auto found = procedures_.find(id);
    return found != procedures_.end() && found->second->device == device ? found->second.get()
                                                                         : nullptr;
}

void SimulatedHardware::dropProcedure(IOProcID id, Locked& locked)
{
    const auto dropped = procedures_.extract(id).mapped();
    callsEnded_.wait(locked.lock, [&] { return dropped->callsUnderWay == 0; });
}

void SimulatedHardware::destroyAggregate(AudioObjectID device, Locked& locked)
{
    std::vector<IOProcID> ids;
    for (const auto& [id, procedure] : procedures_) {
        if (procedure->device == device) {
            ids.push_back(id);
        }
    }
    for (const IOProcID id : ids) {
        if (procedures_.contains(id)) {
            dropProcedure(id, locked);
        }
    }
    objects_.remove(device, locked.changes);
}

} // namespace fadewell
