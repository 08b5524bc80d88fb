#include "audio/TapTargets.h"

#include "audio/DeviceMonitor.h"
#include "audio/OwnObjects.h"
#include "audio/PropertyReaders.h"

#include <set>
#include <string>

namespace fadewell {
namespace {

std::optional<std::string> defaultOutputUID(AudioHardware& hardware)
{
    const auto device = defaultOutputDevice(hardware);
    return device ? stringProperty(hardware, *device, kAudioDevicePropertyDeviceUID) : std::nullopt;
}

/// Where the app would play by itself; our own aggregates are not its choice.
std::string automaticUID(AudioHardware& hardware,
                         const std::vector<AudioObjectID>& devices,
                         const std::string& defaultUID)
{
    for (const AudioObjectID device : devices) {
        const auto uid = stringProperty(hardware, device, kAudioDevicePropertyDeviceUID);
        if (uid && !isOwnAggregate(*uid)) {
            return *uid;
        }
    }
    return defaultUID;
}

TapTarget makeTarget(const TapRequest& request,
                     const std::string& automatic,
                     const std::set<std::string>& connected)
{
    TapTarget target;
    target.appID = request.appID;
    target.processObjectIDs = request.processObjectIDs;
    target.gain = request.gain;
    target.duck = request.duck;
    target.isPlaying = request.isPlaying;
    target.outputDeviceUID = automatic;
    if (request.preferredOutputUID && connected.contains(*request.preferredOutputUID)) {
        target.outputDeviceUID = *request.preferredOutputUID;
        target.isRerouted = target.outputDeviceUID != automatic;
    }
    return target;
}

} // namespace

std::optional<std::vector<TapTarget>> makeTapTargets(AudioHardware& hardware,
                                                     std::span<const TapRequest> requests)
{
    const auto defaultUID = defaultOutputUID(hardware);
    if (!defaultUID) {
        return std::nullopt;
    }
    std::set<std::string> connected;
    for (const auto& output : DeviceMonitor::makeSnapshot(hardware).outputs) {
        connected.insert(output.id);
    }
    std::vector<TapTarget> targets;
    for (const auto& request : requests) {
        const auto automatic = automaticUID(hardware, request.outputDeviceIDs, *defaultUID);
        targets.push_back(makeTarget(request, automatic, connected));
    }
    return targets;
}

} // namespace fadewell
