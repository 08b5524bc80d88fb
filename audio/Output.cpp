#include "audio/Output.h"

#include "audio/CoreAudioError.h"
#include "audio/OwnObjects.h"
#include "audio/PropertyReaders.h"
#include "base/Uuid.h"

#include <utility>

namespace fadewell {
namespace {

constexpr int readinessAttempts = 100;
constexpr double readinessInterval = 0.01;
constexpr OSStatus memoryFullError = -108;

AggregateDescription describe(const Output::Settings& settings)
{
    AggregateDescription description;
    description.name = aggregateName;
    description.uid = std::string(aggregateUIDPrefix) + makeUUID();
    description.master = settings.deviceUID;
    description.isPrivate = true;
    description.stacked = false;
    description.tapAutoStart = false;
    description.subDevices = {{settings.deviceUID}};
    description.taps = {{settings.tapUUID, true}};
    return description;
}

/// A failed read says nothing about the device.
bool isDead(AudioHardware& hardware, AudioObjectID device)
{
    return uint32Property(hardware, device, kAudioDevicePropertyDeviceIsAlive) == 0U;
}

} // namespace

std::unique_ptr<Output> Output::create(const EngineContext& context, const Settings& settings)
{
    // What was built before a failure goes with the object.
    std::unique_ptr<Output> output(new Output(context, settings));
    output->build(settings);
    return output;
}

Output::Output(const EngineContext& context, const Settings& settings)
    : hardware_(context.hardware)
    , clock_(context.clock)
    , deviceUID_(settings.deviceUID)
{}

Output::~Output()
{
    teardown();
}

void Output::build(const Settings& settings)
{
    renderState_ = render_state_create(
        static_cast<float>(settings.gain), static_cast<float>(settings.duck), settings.sampleRate);
    throwUnlessOK(renderState_ ? kAudioHardwareNoError : memoryFullError, "Allocate render state");
    throwUnlessOK(hardware_->createAggregateDevice(describe(settings), aggregateID_),
                  "Create aggregate device");
    waitForAggregateDevice();
    throwUnlessOK(hardware_->createIOProc(aggregateID_, render_io_proc, renderState_, ioProcID_),
                  "Create IOProc");
}

void Output::waitForAggregateDevice() const
{
    for (int attempt = 0; attempt < readinessAttempts; ++attempt) {
        if (hasStreams(kAudioObjectPropertyScopeInput) &&
            hasStreams(kAudioObjectPropertyScopeOutput)) {
            return;
        }
        clock_->sleep(readinessInterval);
    }
    throw CoreAudioError("Wait for aggregate device", kAudioHardwareNotRunningError);
}

bool Output::hasStreams(AudioObjectPropertyScope scope) const
{
    return !objectIDs(*hardware_, aggregateID_, kAudioDevicePropertyStreams, scope).empty();
}

void Output::start()
{
    if (isRunning_ || ioProcID_ == 0) {
        return;
    }
    throwUnlessOK(hardware_->start(aggregateID_, ioProcID_), "Start");
    isRunning_ = true;
}

void Output::stop()
{
    if (isRunning_ && ioProcID_ != 0) {
        hardware_->stop(aggregateID_, ioProcID_);
        isRunning_ = false;
    }
}

void Output::teardown()
{
    listeners_.clear();
    stop();
    if (const IOProcID procedure = std::exchange(ioProcID_, 0); procedure != 0) {
        hardware_->destroyIOProc(aggregateID_, procedure);
    }
    if (const auto aggregate = std::exchange(aggregateID_, kAudioObjectUnknown)) {
        hardware_->destroyAggregateDevice(aggregate);
    }
    render_state_destroy(std::exchange(renderState_, nullptr));
}

bool Output::deviceIsGone() const
{
    if (isDead(*hardware_, aggregateID_)) {
        return true;
    }
    const auto device = deviceID(*hardware_, deviceUID_);
    return !device || isDead(*hardware_, *device);
}

void Output::installListeners(const std::shared_ptr<SerialQueue>& queue,
                              const std::function<void()>& onProblem)
{
    listeners_.clear();
    watch(aggregateID_, queue, onProblem);
    if (const auto device = deviceID(*hardware_, deviceUID_)) {
        watch(*device, queue, onProblem);
    }
}

void Output::watch(AudioObjectID device,
                   const std::shared_ptr<SerialQueue>& queue,
                   const std::function<void()>& onProblem)
{
    for (const auto selector :
         {kAudioDevicePropertyDeviceIsAlive, kAudioDevicePropertyNominalSampleRate})
    {
        if (auto listener =
                HALListener::create(hardware_, device, propertyAddress(selector), queue, onProblem))
        {
            listeners_.push_back(std::move(listener));
        }
    }
}

void Output::setGain(double gain)
{
    if (renderState_) {
        render_state_set_gain(renderState_, static_cast<float>(gain));
    }
}

void Output::setDuck(double duck)
{
    if (renderState_) {
        render_state_set_duck(renderState_, static_cast<float>(duck));
    }
}

bool Output::hasSignal() const
{
    return renderState_ != nullptr && render_state_has_signal(renderState_);
}

std::uint64_t Output::callbackCount() const
{
    return renderState_ ? render_state_callback_count(renderState_) : 0;
}

} // namespace fadewell
