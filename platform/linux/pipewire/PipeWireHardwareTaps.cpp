#include "platform/linux/pipewire/PipeWireHardware.h"

// Where the tap half is wired in; this build of the library has none and says so.

namespace fadewell {

namespace {
constexpr OSStatus unsupported = kAudioHardwareUnsupportedOperationError;
}

void PipeWireHardware::makeTaps() {}

bool PipeWireHardware::tapsOwn(AudioObjectID /*object*/) const
{
    return false;
}

bool PipeWireHardware::tapsHave(AudioObjectID /*object*/,
                                const AudioObjectPropertyAddress& /*address*/) const
{
    return false;
}

OSStatus PipeWireHardware::tapsIsSettable(AudioObjectID /*object*/,
                                          const AudioObjectPropertyAddress& /*address*/,
                                          bool& /*settable*/) const
{
    return unsupported;
}

OSStatus PipeWireHardware::tapsDataSize(AudioObjectID /*object*/,
                                        const AudioObjectPropertyAddress& /*address*/,
                                        std::uint32_t& /*size*/) const
{
    return unsupported;
}

OSStatus PipeWireHardware::tapsGetData(AudioObjectID /*object*/,
                                       const AudioObjectPropertyAddress& /*address*/,
                                       std::span<std::byte> /*data*/,
                                       std::uint32_t& /*used*/) const
{
    return unsupported;
}

OSStatus PipeWireHardware::tapsSetData(AudioObjectID /*object*/,
                                       const AudioObjectPropertyAddress& /*address*/,
                                       std::span<const std::byte> /*data*/)
{
    return unsupported;
}

OSStatus PipeWireHardware::tapsGetString(AudioObjectID /*object*/,
                                         const AudioObjectPropertyAddress& /*address*/,
                                         std::optional<std::string>& /*text*/) const
{
    return unsupported;
}

std::vector<AudioObjectID> PipeWireHardware::tapIDs() const
{
    return {};
}

std::vector<AudioObjectID> PipeWireHardware::aggregateIDs() const
{
    return {};
}

AudioObjectID PipeWireHardware::aggregateForUID(std::string_view /*uid*/) const
{
    return kAudioObjectUnknown;
}

OSStatus PipeWireHardware::tapDescription(AudioObjectID /*tap*/, TapDescription& /*description*/)
{
    return unsupported;
}

OSStatus PipeWireHardware::setTapDescription(AudioObjectID /*tap*/,
                                             const TapDescription& /*description*/)
{
    return unsupported;
}

OSStatus PipeWireHardware::createProcessTap(const TapDescription& /*description*/,
                                            AudioObjectID& /*tap*/)
{
    return unsupported;
}

OSStatus PipeWireHardware::destroyProcessTap(AudioObjectID /*tap*/)
{
    return unsupported;
}

OSStatus PipeWireHardware::createAggregateDevice(const AggregateDescription& /*description*/,
                                                 AudioObjectID& /*device*/)
{
    return unsupported;
}

OSStatus PipeWireHardware::destroyAggregateDevice(AudioObjectID /*device*/)
{
    return unsupported;
}

OSStatus PipeWireHardware::createIOProc(AudioObjectID /*device*/,
                                        AudioDeviceIOProc /*procedure*/,
                                        void* /*client*/,
                                        IOProcID& /*id*/)
{
    return unsupported;
}

OSStatus PipeWireHardware::destroyIOProc(AudioObjectID /*device*/, IOProcID /*id*/)
{
    return unsupported;
}

OSStatus PipeWireHardware::start(AudioObjectID /*device*/, IOProcID /*id*/)
{
    return unsupported;
}

OSStatus PipeWireHardware::stop(AudioObjectID /*device*/, IOProcID /*id*/)
{
    return unsupported;
}

} // namespace fadewell
