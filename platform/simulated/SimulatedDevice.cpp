#include "platform/simulated/SimulatedDevice.h"

namespace fadewell {

PropertyTable propertiesOf(const SimulatedDevice& device)
{
    PropertyTable table;
    const auto global = [&](AudioObjectPropertySelector selector, PropertyValue value) {
        table.put({selector, kAudioObjectPropertyScopeGlobal, 0}, std::move(value));
    };
    if (device.uid) {
        global(kAudioDevicePropertyDeviceUID, *device.uid);
    }
    if (device.name) {
        global(kAudioObjectPropertyName, *device.name);
    }
    if (device.transport) {
        global(kAudioDevicePropertyTransportType, bytesOf(*device.transport));
    }
    if (device.isHidden) {
        global(kAudioDevicePropertyIsHidden, bytesOf(std::uint32_t{*device.isHidden}));
    }
    global(kAudioDevicePropertyDeviceIsAlive, bytesOf(std::uint32_t{device.isAlive}));
    global(kAudioDevicePropertyNominalSampleRate, bytesOf(device.sampleRate));
    if (device.dataSource) {
        table.put({kAudioDevicePropertyDataSource, kAudioObjectPropertyScopeOutput, 0},
                  bytesOf(*device.dataSource));
    }
    for (const auto& [element, volume] : device.inputVolume) {
        table.put({kAudioDevicePropertyVolumeScalar, kAudioObjectPropertyScopeInput, element},
                  bytesOf(volume.value),
                  volume.isSettable);
    }
    for (const auto& [element, mute] : device.inputMute) {
        table.put({kAudioDevicePropertyMute, kAudioObjectPropertyScopeInput, element},
                  bytesOf(std::uint32_t{mute.isOn}),
                  mute.isSettable);
    }
    return table;
}

} // namespace fadewell
