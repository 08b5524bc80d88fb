#include "platform/linux/pipewire/PipeWireHardware.h"
#include "platform/linux/pipewire/taps/Taps.h"

namespace fadewell {

using pipewire::Connection;
using pipewire::Taps;

void PipeWireHardware::makeTaps()
{
    const Connection::Lock lock(*connection_);
    taps_ = std::make_shared<Taps>(graph_, ids_, listeners_, devices_, processes_, journalFolder_);
    devices_.onChanged([taps = std::weak_ptr(taps_)] {
        if (const auto alive = taps.lock()) {
            alive->followDevices();
        }
    });
}

bool PipeWireHardware::tapsOwn(AudioObjectID object) const
{
    const Connection::Lock lock(*connection_);
    return taps_->owns(object);
}

bool PipeWireHardware::tapsHave(AudioObjectID object,
                                const AudioObjectPropertyAddress& address) const
{
    const Connection::Lock lock(*connection_);
    return taps_->has(object, address);
}

OSStatus PipeWireHardware::tapsIsSettable(AudioObjectID object,
                                          const AudioObjectPropertyAddress& address,
                                          bool& settable) const
{
    const Connection::Lock lock(*connection_);
    if (!taps_->has(object, address)) {
        return kAudioHardwareUnknownPropertyError;
    }
    settable = address.mSelector == kAudioTapPropertyDescription;
    return kAudioHardwareNoError;
}

OSStatus PipeWireHardware::tapsDataSize(AudioObjectID object,
                                        const AudioObjectPropertyAddress& address,
                                        std::uint32_t& size) const
{
    const Connection::Lock lock(*connection_);
    return taps_->dataSize(object, address, size);
}

OSStatus PipeWireHardware::tapsGetData(AudioObjectID object,
                                       const AudioObjectPropertyAddress& address,
                                       std::span<std::byte> data,
                                       std::uint32_t& used) const
{
    const Connection::Lock lock(*connection_);
    return taps_->getData(object, address, data, used);
}

OSStatus PipeWireHardware::tapsSetData(AudioObjectID /*object*/,
                                       const AudioObjectPropertyAddress& /*address*/,
                                       std::span<const std::byte> /*data*/)
{
    // The one thing that can be written, the description, is no plain data.
    return kAudioHardwareIllegalOperationError;
}

OSStatus PipeWireHardware::tapsGetString(AudioObjectID object,
                                         const AudioObjectPropertyAddress& address,
                                         std::optional<std::string>& text) const
{
    const Connection::Lock lock(*connection_);
    return taps_->getString(object, address, text);
}

std::vector<AudioObjectID> PipeWireHardware::tapIDs() const
{
    const Connection::Lock lock(*connection_);
    return taps_->tapIDs();
}

std::vector<AudioObjectID> PipeWireHardware::aggregateIDs() const
{
    const Connection::Lock lock(*connection_);
    return taps_->aggregateIDs();
}

AudioObjectID PipeWireHardware::aggregateForUID(std::string_view uid) const
{
    const Connection::Lock lock(*connection_);
    return taps_->aggregateForUID(uid);
}

void PipeWireHardware::setGatedApps(std::vector<GatedApp> apps)
{
    taps_->setGatedApps(std::move(apps));
}

void PipeWireHardware::setLoweredStarts(std::optional<LoweredStarts> lowered)
{
    taps_->setLoweredStarts(std::move(lowered));
}

OSStatus PipeWireHardware::tapDescription(AudioObjectID tap, TapDescription& description)
{
    return taps_->tapDescription(tap, description);
}

OSStatus PipeWireHardware::setTapDescription(AudioObjectID tap, const TapDescription& description)
{
    return taps_->setTapDescription(tap, description);
}

OSStatus PipeWireHardware::createProcessTap(const TapDescription& description, AudioObjectID& tap)
{
    return taps_->createProcessTap(description, tap);
}

OSStatus PipeWireHardware::destroyProcessTap(AudioObjectID tap)
{
    return taps_->destroyProcessTap(tap);
}

OSStatus PipeWireHardware::createAggregateDevice(const AggregateDescription& description,
                                                 AudioObjectID& device)
{
    return taps_->createAggregateDevice(description, device);
}

OSStatus PipeWireHardware::destroyAggregateDevice(AudioObjectID device)
{
    return taps_->destroyAggregateDevice(device);
}

OSStatus PipeWireHardware::createIOProc(AudioObjectID device,
                                        AudioDeviceIOProc procedure,
                                        void* client,
                                        IOProcID& id)
{
    return taps_->createIOProc(device, procedure, client, id);
}

OSStatus PipeWireHardware::destroyIOProc(AudioObjectID device, IOProcID id)
{
    return taps_->destroyIOProc(device, id);
}

OSStatus PipeWireHardware::start(AudioObjectID device, IOProcID id)
{
    return taps_->start(device, id);
}

OSStatus PipeWireHardware::stop(AudioObjectID device, IOProcID id)
{
    return taps_->stop(device, id);
}

} // namespace fadewell
