#include "audio/PromptingTap.h"

#include "audio/OwnObjects.h"
#include "audio/PropertyReaders.h"
#include "base/Logger.h"
#include "base/Uuid.h"

#include <utility>

namespace fadewell {
namespace {

AggregateDescription describe(const std::string& deviceUID, const std::string& tapUUID)
{
    AggregateDescription description;
    description.name = aggregateName;
    description.uid = std::string(aggregateUIDPrefix) + tapUUID;
    description.master = deviceUID;
    description.isPrivate = true;
    description.subDevices = {{deviceUID}};
    description.taps = {{tapUUID, std::nullopt}};
    return description;
}

} // namespace

PromptingTap::PromptingTap(std::shared_ptr<AudioHardware> hardware)
    : hardware_(std::move(hardware))
{}

PromptingTap::~PromptingTap()
{
    stop();
}

bool PromptingTap::start()
{
    if (!prepare()) {
        Logger("permission").error("Couldn't set up the permission request");
        return false;
    }
    return run();
}

bool PromptingTap::prepare()
{
    auto description = TapDescription::stereoGlobalTapButExcludeProcesses({});
    description.uuid = makeUUID();
    description.isPrivate = true;
    description.muteBehavior = TapMuteBehavior::unmuted;
    description.name = "Fadewell permission request";
    if (hardware_->createProcessTap(description, tap_) != kAudioHardwareNoError ||
        tap_ == kAudioObjectUnknown)
    {
        return false;
    }
    const auto device = defaultOutputDevice(*hardware_);
    const auto uid =
        device ? stringProperty(*hardware_, *device, kAudioDevicePropertyDeviceUID) : std::nullopt;
    if (!uid) {
        return false;
    }
    aggregateDescription_ = describe(*uid, description.uuid);
    state_ = render_state_create(0.0F, 0.0F, 48000.0);
    return state_ != nullptr;
}

bool PromptingTap::run()
{
    if (hardware_->createAggregateDevice(aggregateDescription_, aggregate_) !=
            kAudioHardwareNoError ||
        hardware_->createIOProc(aggregate_, render_io_proc, state_, ioProc_) !=
            kAudioHardwareNoError ||
        ioProc_ == 0)
    {
        return false;
    }
    return hardware_->start(aggregate_, ioProc_) == kAudioHardwareNoError;
}

void PromptingTap::stop()
{
    if (const IOProcID procedure = std::exchange(ioProc_, 0); procedure != 0) {
        hardware_->stop(aggregate_, procedure);
        hardware_->destroyIOProc(aggregate_, procedure);
    }
    if (const auto aggregate = std::exchange(aggregate_, kAudioObjectUnknown)) {
        hardware_->destroyAggregateDevice(aggregate);
    }
    if (const auto tap = std::exchange(tap_, kAudioObjectUnknown)) {
        hardware_->destroyProcessTap(tap);
    }
    render_state_destroy(std::exchange(state_, nullptr));
}

} // namespace fadewell
