#include "audio/DeviceMonitor.h"

#include "audio/OwnObjects.h"
#include "audio/PropertyReaders.h"
#include "audio/WeakTask.h"
#include "base/LocalizedText.h"

#include <algorithm>
#include <set>
#include <utility>

namespace fadewell {
namespace {

constexpr double publishDelay = 0.1;

/// The device as an output that a user may choose; absent when it is none.
std::optional<OutputDevice> readOutput(AudioHardware& hardware, AudioObjectID device)
{
    if (objectIDs(hardware, device, kAudioDevicePropertyStreams, kAudioObjectPropertyScopeOutput)
            .empty() ||
        uint32Property(hardware, device, kAudioDevicePropertyIsHidden) == 1U)
    {
        return std::nullopt;
    }
    const auto uid = stringProperty(hardware, device, kAudioDevicePropertyDeviceUID);
    if (!uid || isOwnAggregate(*uid)) {
        return std::nullopt;
    }
    OutputDevice output;
    output.id = *uid;
    output.objectID = device;
    output.name = stringProperty(hardware, device, kAudioObjectPropertyName).value_or(*uid);
    const auto transport =
        uint32Property(hardware, device, kAudioDevicePropertyTransportType).value_or(0);
    const bool isHeadphones =
        uint32Property(
            hardware, device, kAudioDevicePropertyDataSource, kAudioObjectPropertyScopeOutput) ==
        kAudioDataSourceHeadphones;
    output.kind = OutputDevice::classify(transport, output.name, isHeadphones);
    return output;
}

/// Behind those of the same name, which keeps the platform's order among them.
void insertByName(std::vector<OutputDevice>& outputs, OutputDevice output)
{
    const auto place = std::upper_bound(
        outputs.begin(), outputs.end(), output, [](const auto& left, const auto& right) {
            return localizedStandardCompare(left.name, right.name) < 0;
        });
    outputs.insert(place, std::move(output));
}

} // namespace

std::shared_ptr<DeviceMonitor> DeviceMonitor::create(EngineContext context)
{
    return std::shared_ptr<DeviceMonitor>(new DeviceMonitor(std::move(context)));
}

DeviceMonitor::DeviceMonitor(EngineContext context)
    : context_(std::move(context))
    , queue_(context_.makeQueue("app.fadewell.device-monitor"))
{}

DeviceMonitor::~DeviceMonitor() = default;

Stream<DeviceSnapshot>& DeviceMonitor::snapshots()
{
    return snapshots_;
}

void DeviceMonitor::start()
{
    queue_->async(weakTask(this, [](DeviceMonitor& monitor) {
        monitor.queue_->assertCurrent();
        monitor.startOnQueue();
    }));
}

void DeviceMonitor::stop()
{
    queue_->sync([this] {
        queue_->assertCurrent();
        systemListeners_.clear();
        deviceListeners_.clear();
    });
    snapshots_.finish();
}

void DeviceMonitor::startOnQueue()
{
    if (!systemListeners_.empty()) {
        return;
    }
    for (const auto selector :
         {kAudioHardwarePropertyDevices, kAudioHardwarePropertyDefaultOutputDevice})
    {
        listen(systemListeners_,
               kAudioObjectSystemObject,
               propertyAddress(selector),
               weakTask(this, [](DeviceMonitor& monitor) {
                   monitor.queue_->assertCurrent();
                   monitor.reconcileDevices();
               }));
    }
    reconcileDevices();
}

void DeviceMonitor::listen(HALListeners& listeners,
                           AudioObjectID object,
                           const AudioObjectPropertyAddress& address,
                           Task changed) const
{
    if (auto listener =
            HALListener::create(context_.hardware, object, address, queue_, std::move(changed)))
    {
        listeners.push_back(std::move(listener));
    }
}

void DeviceMonitor::reconcileDevices()
{
    const auto list =
        objectIDs(*context_.hardware, kAudioObjectSystemObject, kAudioHardwarePropertyDevices);
    const std::set<AudioObjectID> current(list.begin(), list.end());
    std::erase_if(deviceListeners_,
                  [&current](const auto& entry) { return !current.contains(entry.first); });

    const auto changed = weakTask(this, [](DeviceMonitor& monitor) {
        monitor.queue_->assertCurrent();
        monitor.schedulePublish();
    });
    for (const AudioObjectID device : current) {
        if (deviceListeners_.contains(device)) {
            continue;
        }
        HALListeners& listeners = deviceListeners_[device];
        listen(listeners,
               device,
               propertyAddress(kAudioDevicePropertyDataSource, kAudioObjectPropertyScopeOutput),
               changed);
        listen(listeners, device, propertyAddress(kAudioObjectPropertyName), changed);
    }
    schedulePublish();
}

void DeviceMonitor::schedulePublish()
{
    if (std::exchange(isPublishScheduled_, true)) {
        return;
    }
    publishTimer_ = queue_->after(publishDelay, weakTask(this, [](DeviceMonitor& monitor) {
                                      monitor.queue_->assertCurrent();
                                      monitor.publish();
                                  }));
}

void DeviceMonitor::publish()
{
    isPublishScheduled_ = false;
    auto snapshot = makeSnapshot(*context_.hardware);
    if (last_ != snapshot) {
        last_ = snapshot;
        snapshots_.send(std::move(snapshot));
    }
}

DeviceSnapshot DeviceMonitor::makeSnapshot(AudioHardware& hardware)
{
    DeviceSnapshot snapshot;
    for (const AudioObjectID device :
         objectIDs(hardware, kAudioObjectSystemObject, kAudioHardwarePropertyDevices))
    {
        if (auto output = readOutput(hardware, device)) {
            insertByName(snapshot.outputs, *std::move(output));
        }
    }
    if (const auto device = defaultOutputDevice(hardware)) {
        snapshot.defaultOutputUID =
            stringProperty(hardware, *device, kAudioDevicePropertyDeviceUID);
    }
    return snapshot;
}

} // namespace fadewell
