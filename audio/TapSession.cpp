#include "audio/TapSession.h"

#include "audio/CoreAudioError.h"
#include "audio/OwnObjects.h"
#include "audio/PropertyReaders.h"
#include "base/Uuid.h"

#include <utility>

namespace fadewell {
namespace {

constexpr int formatAttempts = 50;
constexpr double formatInterval = 0.01;

bool isFloat32(const AudioStreamBasicDescription& format)
{
    return (format.mFormatFlags & kAudioFormatFlagIsFloat) != 0 && format.mBitsPerChannel == 32;
}

TapDescription describe(const std::string& appID, const std::vector<AudioObjectID>& processes)
{
    auto description = TapDescription::stereoMixdownOfProcesses(processes);
    description.uuid = makeUUID();
    description.name = std::string(tapNamePrefix) + appID;
    description.isPrivate = true;
    description.muteBehavior = TapMuteBehavior::mutedWhenTapped;
    return description;
}

} // namespace

AudioStreamBasicDescription readTapFormat(AudioHardware& hardware, Clock& clock, AudioObjectID tap)
{
    OSStatus status = kAudioHardwareNoError;
    for (int attempt = 0; attempt < formatAttempts; ++attempt) {
        AudioStreamBasicDescription format;
        std::uint32_t used = 0;
        status = hardware.getData(tap,
                                  propertyAddress(kAudioTapPropertyFormat),
                                  std::as_writable_bytes(std::span(&format, 1)),
                                  used);
        if (status == kAudioHardwareNoError && format.mSampleRate > 0 &&
            format.mFormatID == kAudioFormatLinearPCM)
        {
            throwUnlessOK(isFloat32(format) ? kAudioHardwareNoError
                                            : kAudioHardwareUnsupportedOperationError,
                          "Tap format is not 32-bit float");
            return format;
        }
        clock.sleep(formatInterval);
    }
    throw CoreAudioError("Read tap format",
                         status == kAudioHardwareNoError ? kAudioHardwareNotRunningError : status);
}

std::shared_ptr<TapSession> TapSession::create(const EngineContext& context,
                                               const std::string& appID,
                                               std::vector<AudioObjectID> processes,
                                               const std::string& deviceUID,
                                               double gain)
{
    // What was built before a failure goes with the object.
    std::shared_ptr<TapSession> session(new TapSession(context, appID, std::move(processes), gain));
    session->build(deviceUID);
    return session;
}

TapSession::TapSession(const EngineContext& context,
                       const std::string& appID,
                       std::vector<AudioObjectID> processes,
                       double gain)
    : context_(context)
    , appID_(appID)
    , processObjectIDs_(std::move(processes))
    , gain_(gain)
    , tapDescription_(describe(appID, processObjectIDs_))
{}

TapSession::~TapSession()
{
    teardown();
}

void TapSession::build(const std::string& deviceUID)
{
    throwUnlessOK(context_.hardware->createProcessTap(tapDescription_, tapID_), "Create tap");
    throwUnlessOK(tapID_ == kAudioObjectUnknown ? kAudioHardwareBadObjectError
                                                : kAudioHardwareNoError,
                  "Create tap (no object)");
    output_ = makeOutput(deviceUID);
}

std::unique_ptr<Output> TapSession::makeOutput(const std::string& deviceUID)
{
    const auto format = readTapFormat(*context_.hardware, *context_.clock, tapID_);
    return Output::create(context_,
                          {tapDescription_.uuid, deviceUID, gain_, duck_, format.mSampleRate});
}

void TapSession::start()
{
    if (output_) {
        output_->start();
    }
}

void TapSession::setProcesses(std::vector<AudioObjectID> processes)
{
    tapDescription_.processes = processes;
    throwUnlessOK(writeDescription(), "Update tap processes");
    processObjectIDs_ = std::move(processes);
}

void TapSession::moveOutput(const std::string& deviceUID)
{
    auto moved = makeOutput(deviceUID);
    if (isRunning()) {
        // Both run for a moment: a gap would be heard.
        moved->start();
    }
    if (output_) {
        output_->teardown();
    }
    output_ = std::move(moved);
    if (health_) {
        monitor(health_->queue, health_->onProblem);
    }
}

void TapSession::monitor(std::shared_ptr<SerialQueue> queue, std::function<void()> onProblem)
{
    health_ = Health{std::move(queue), std::move(onProblem)};
    tapListener_ = HALListener::create(context_.hardware,
                                       tapID_,
                                       propertyAddress(kAudioTapPropertyFormat),
                                       health_->queue,
                                       health_->onProblem);
    if (output_) {
        output_->installListeners(health_->queue, health_->onProblem);
    }
}

void TapSession::teardown()
{
    tapListener_ = nullptr;
    health_.reset();
    output_ = nullptr;
    if (const auto tap = std::exchange(tapID_, kAudioObjectUnknown)) {
        context_.hardware->destroyProcessTap(tap);
    }
}

void TapSession::setGain(double gain)
{
    gain_ = gain;
    if (output_) {
        output_->setGain(gain);
    }
}

void TapSession::setDuck(double duck)
{
    duck_ = duck;
    if (output_) {
        output_->setDuck(duck);
    }
}

void TapSession::updateUnity(double now)
{
    if (gain_ != 1.0 || duck_ != 1.0) {
        unitySince_.reset();
    } else if (!unitySince_) {
        unitySince_ = now;
    }
}

OSStatus TapSession::writeDescription()
{
    return context_.hardware->setTapDescription(tapID_, tapDescription_);
}

} // namespace fadewell
