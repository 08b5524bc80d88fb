#include "audio/OwnObjects.h"
#include "audio/PropertyReaders.h"
#include "audio/TapManager.h"

namespace fadewell {
namespace {

int destroyAggregates(AudioHardware& hardware)
{
    int removed = 0;
    for (const AudioObjectID device :
         objectIDs(hardware, kAudioObjectSystemObject, kAudioHardwarePropertyDevices))
    {
        const auto uid = stringProperty(hardware, device, kAudioDevicePropertyDeviceUID);
        if (uid && isOwnAggregate(*uid) &&
            hardware.destroyAggregateDevice(device) == kAudioHardwareNoError) {
            ++removed;
        }
    }
    return removed;
}

int destroyTaps(AudioHardware& hardware)
{
    int removed = 0;
    for (const AudioObjectID tap :
         objectIDs(hardware, kAudioObjectSystemObject, kAudioHardwarePropertyTapList))
    {
        TapDescription description;
        if (hardware.tapDescription(tap, description) == kAudioHardwareNoError &&
            isOwnTap(description.name) && hardware.destroyProcessTap(tap) == kAudioHardwareNoError)
        {
            ++removed;
        }
    }
    return removed;
}

} // namespace

int TapManager::removeLeftovers(AudioHardware& hardware)
{
    // Aggregates first: a tap that one of them reads is still in use.
    int removed = destroyAggregates(hardware);
    removed += destroyTaps(hardware);
    if (removed > 0) {
        Logger("taps").notice("Removed {} leftover audio objects", removed);
    }
    return removed;
}

} // namespace fadewell
