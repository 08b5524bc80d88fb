#include "platform/simulated/SimulatedHardware.h"

#include "base/Uuid.h"

#include <algorithm>
#include <type_traits>
#include <utility>

// What tests and previews script, and the machinery that both halves share. The platform's own
// calls stand in SimulatedHardwareCalls.cpp.

namespace fadewell {
namespace {

constexpr AudioObjectPropertyAddress globalAddress(AudioObjectPropertySelector selector)
{
    return {selector, kAudioObjectPropertyScopeGlobal, kAudioObjectPropertyElementMain};
}

} // namespace

std::shared_ptr<SimulatedHardware> SimulatedHardware::create(std::shared_ptr<SerialQueue> queue)
{
    return std::shared_ptr<SimulatedHardware>(new SimulatedHardware(std::move(queue)));
}

void SimulatedHardware::change(const std::function<void(Locked&)>& work)
{
    Locked locked{std::unique_lock(mutex_), {}};
    work(locked);
    const auto notices = listeners_.matching(locked.changes);
    locked.lock.unlock();
    ListenerTable::post(notices);
}

AudioObjectID SimulatedHardware::addProcess(const SimulatedProcess& process)
{
    AudioObjectID id = 0;
    change([&](Locked& locked) { id = objects_.add(process, locked.changes); });
    return id;
}

void SimulatedHardware::removeProcess(AudioObjectID process)
{
    change([&](Locked& locked) { objects_.remove(process, locked.changes); });
}

void SimulatedHardware::editProcess(AudioObjectID process,
                                    const std::function<void(SimulatedProcess&)>& edit)
{
    change([&](Locked& locked) {
        if (auto* detail = objects_.get<SimulatedProcess>(process)) {
            edit(*detail);
            objects_.refresh(locked.changes);
        }
    });
}

void SimulatedHardware::setRunning(AudioObjectID process, bool output, bool input)
{
    editProcess(process, [&](SimulatedProcess& detail) {
        detail.isRunningOutput = output;
        detail.isRunningInput = input;
    });
}

void SimulatedHardware::setOutputDevices(AudioObjectID process,
                                         std::optional<std::vector<AudioObjectID>> devices)
{
    editProcess(process, [&](SimulatedProcess& detail) { detail.outputDevices = devices; });
}

void SimulatedHardware::setSound(AudioObjectID process, float left, float right)
{
    editProcess(process, [&](SimulatedProcess& detail) {
        detail.left = left;
        detail.right = right;
    });
}

AudioObjectID SimulatedHardware::addDevice(const SimulatedDevice& device)
{
    AudioObjectID id = 0;
    change([&](Locked& locked) { id = objects_.addDevice(device, locked.changes); });
    return id;
}

void SimulatedHardware::removeDevice(AudioObjectID device)
{
    change([&](Locked& locked) { objects_.retire(device, locked.changes); });
    queue_->async([weak = weak_from_this(), device] {
        if (const auto self = weak.lock()) {
            self->change([&](Locked& locked) { self->objects_.remove(device, locked.changes); });
        }
    });
}

void SimulatedHardware::setDefaultOutput(AudioObjectID device)
{
    change([&](Locked& locked) { objects_.setDefaultOutput(device, locked.changes); });
}

void SimulatedHardware::setDefaultInput(AudioObjectID device)
{
    change([&](Locked& locked) { objects_.setDefaultInput(device, locked.changes); });
}

void SimulatedHardware::setAlive(AudioObjectID device, bool isAlive)
{
    setProperty(
        device, globalAddress(kAudioDevicePropertyDeviceIsAlive), bytesOf(std::uint32_t{isAlive}));
}

void SimulatedHardware::setName(AudioObjectID device, const std::string& name)
{
    setProperty(device, globalAddress(kAudioObjectPropertyName), name);
}

void SimulatedHardware::setSampleRate(AudioObjectID device, double sampleRate)
{
    setProperty(device, globalAddress(kAudioDevicePropertyNominalSampleRate), bytesOf(sampleRate));
}

void SimulatedHardware::setDataSource(AudioObjectID device, std::uint32_t source)
{
    setProperty(device,
                {kAudioDevicePropertyDataSource, kAudioObjectPropertyScopeOutput, 0},
                bytesOf(source));
}

void SimulatedHardware::setInputVolume(AudioObjectID device,
                                       AudioObjectPropertyElement element,
                                       float volume)
{
    setProperty(device,
                {kAudioDevicePropertyVolumeScalar, kAudioObjectPropertyScopeInput, element},
                bytesOf(volume));
}

void SimulatedHardware::setInputMute(AudioObjectID device, bool isOn)
{
    setProperty(device,
                {kAudioDevicePropertyMute, kAudioObjectPropertyScopeInput, 0},
                bytesOf(std::uint32_t{isOn}));
}

void SimulatedHardware::setProperty(AudioObjectID object,
                                    const AudioObjectPropertyAddress& address,
                                    PropertyValue value)
{
    change([&](Locked& locked) { objects_.put(object, address, value, locked.changes); });
}

void SimulatedHardware::eraseProperty(AudioObjectID object,
                                      const AudioObjectPropertyAddress& address)
{
    change([&](Locked& locked) { objects_.erase(object, address, locked.changes); });
}

void SimulatedHardware::setNextTapFormat(const SimulatedTapFormat& format)
{
    const std::lock_guard lock(mutex_);
    nextTapFormat_ = format;
}

void SimulatedHardware::setTapFormat(AudioObjectID tap, const AudioStreamBasicDescription& format)
{
    change([&](Locked& locked) {
        if (auto* detail = objects_.get<SimulatedTap>(tap)) {
            detail->format.format = format;
            objects_.put(
                tap, globalAddress(kAudioTapPropertyFormat), bytesOf(format), locked.changes);
        }
    });
}

void SimulatedHardware::setNextReadiness(const SimulatedReadiness& readiness)
{
    const std::lock_guard lock(mutex_);
    nextReadiness_ = readiness;
}

void SimulatedHardware::setCapturePermitted(bool isPermitted)
{
    const std::lock_guard lock(mutex_);
    isCapturePermitted_ = isPermitted;
}

AudioObjectID SimulatedHardware::plantTap(const TapDescription& description)
{
    AudioObjectID id = 0;
    change([&](Locked& locked) { id = makeTap(description, locked); });
    return id;
}

AudioObjectID SimulatedHardware::plantAggregate(const AggregateDescription& description)
{
    AudioObjectID id = 0;
    change([&](Locked& locked) { id = makeAggregate(description, locked); });
    return id;
}

AudioObjectID SimulatedHardware::makeTap(const TapDescription& description, Locked& locked)
{
    SimulatedTap tap{description, nextTapFormat_, queue_->clock().uptime()};
    if (tap.description.uuid.empty()) {
        tap.description.uuid = makeUUID();
    }
    return objects_.add(std::move(tap), locked.changes);
}

AudioObjectID SimulatedHardware::makeAggregate(const AggregateDescription& description,
                                               Locked& locked)
{
    return objects_.add(SimulatedAggregate{description, nextReadiness_, queue_->clock().uptime()},
                        locked.changes);
}

SimulatedHardware::Made SimulatedHardware::made() const
{
    const std::lock_guard lock(mutex_);
    const auto count = [this]<class Detail>(std::type_identity<Detail>) {
        return static_cast<std::size_t>(
            std::ranges::count_if(objects_.all(), [](const auto& entry) {
                return std::holds_alternative<Detail>(entry.second.detail);
            }));
    };
    return {count(std::type_identity<SimulatedTap>{}),
            count(std::type_identity<SimulatedAggregate>{}),
            procedures_.size(),
            listeners_.count()};
}

std::vector<AggregateDescription> SimulatedHardware::aggregateDescriptions() const
{
    const std::lock_guard lock(mutex_);
    std::vector<AggregateDescription> descriptions;
    for (const auto& [id, object] : objects_.all()) {
        if (const auto* aggregate = std::get_if<SimulatedAggregate>(&object.detail)) {
            descriptions.push_back(aggregate->description);
        }
    }
    return descriptions;
}

void SimulatedHardware::setInterleaved(bool isInterleaved)
{
    const std::lock_guard lock(mutex_);
    isInterleaved_ = isInterleaved;
}

void SimulatedHardware::setStalled(AudioObjectID device, bool isStalled)
{
    const std::lock_guard lock(mutex_);
    for (const auto& [id, procedure] : procedures_) {
        if (procedure->device == device) {
            procedure->isStalled = isStalled;
        }
    }
}

HeardSound SimulatedHardware::renderCycle(std::uint32_t frames)
{
    return renderCycle(frames, playedSound(frames));
}

HeardSound SimulatedHardware::renderCycle(std::uint32_t frames, const PlayedSound& played)
{
    std::unique_lock lock(mutex_);
    SoundFlow flow(objects_, procedures_, isCapturePermitted_, isInterleaved_);
    auto heard = flow.directSound(played, frames);
    auto calls = flow.plan(played, frames);
    for (auto& call : calls) {
        // An earlier procedure of this cycle may have seen another thread destroy this one.
        if (!procedures_.contains(call.procedure->id)) {
            continue;
        }
        ++call.procedure->callsUnderWay;
        lock.unlock();
        call.run();
        lock.lock();
        --call.procedure->callsUnderWay;
        call.procedure->sampleTime += frames;
        callsEnded_.notify_all();
        SoundFlow::collect(call, frames, heard);
    }
    return heard;
}

Timer SimulatedHardware::runCycles(std::uint32_t frames, double interval)
{
    return queue_->every(interval, interval, 0, [weak = weak_from_this(), frames] {
        if (const auto self = weak.lock()) {
            self->renderCycle(frames);
        }
    });
}

PlayedSound SimulatedHardware::playedSound(std::uint32_t frames)
{
    const std::lock_guard lock(mutex_);
    PlayedSound played;
    for (const auto& [id, object] : objects_.all()) {
        if (const auto* process = std::get_if<SimulatedProcess>(&object.detail)) {
            played[id] = {std::vector(frames, process->left), std::vector(frames, process->right)};
        }
    }
    return played;
}

} // namespace fadewell
