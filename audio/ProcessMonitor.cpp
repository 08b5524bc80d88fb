#include "audio/ProcessMonitor.h"

#include "audio/PropertyReaders.h"
#include "audio/WeakTask.h"

#include <set>
#include <utility>

namespace fadewell {
namespace {

constexpr double publishDelay = 0.05;

bool isSet(AudioHardware& hardware, AudioObjectID process, AudioObjectPropertySelector selector)
{
    return uint32Property(hardware, process, selector).value_or(0) != 0;
}

/// The kernel and the system launcher say nothing about which app a process belongs to.
std::optional<std::int32_t> parentPID(ProcessLookup& lookup, std::int32_t pid)
{
    const auto parent = lookup.parent(pid);
    return parent && *parent >= 2 ? parent : std::nullopt;
}

std::optional<std::int32_t> responsiblePID(ProcessLookup& lookup, std::int32_t pid)
{
    if (!lookup.knowsResponsibleProcesses()) {
        return std::nullopt;
    }
    const std::int32_t responsible = lookup.responsible(pid);
    return responsible >= 1 && responsible != pid ? std::optional(responsible) : std::nullopt;
}

} // namespace

std::shared_ptr<ProcessMonitor> ProcessMonitor::create(EngineContext context)
{
    return std::shared_ptr<ProcessMonitor>(new ProcessMonitor(std::move(context)));
}

ProcessMonitor::ProcessMonitor(EngineContext context)
    : context_(std::move(context))
    , queue_(context_.makeQueue("app.fadewell.process-monitor"))
{}

ProcessMonitor::~ProcessMonitor() = default;

Stream<std::vector<AudioProcess>>& ProcessMonitor::processes()
{
    return processes_;
}

void ProcessMonitor::start()
{
    queue_->async(weakTask(this, [](ProcessMonitor& monitor) {
        monitor.queue_->assertCurrent();
        monitor.startOnQueue();
    }));
}

void ProcessMonitor::refresh()
{
    queue_->async(weakTask(this, [](ProcessMonitor& monitor) {
        monitor.queue_->assertCurrent();
        monitor.schedulePublish();
    }));
}

void ProcessMonitor::stop()
{
    queue_->sync([this] {
        queue_->assertCurrent();
        stopOnQueue();
    });
    processes_.finish();
}

void ProcessMonitor::startOnQueue()
{
    if (listListener_) {
        return;
    }
    if (!context_.processLookup->knowsResponsibleProcesses()) {
        log_.notice(
            "Responsible-process lookup unavailable; grouping by parent and bundle ID only");
    }
    listListener_ = HALListener::create(context_.hardware,
                                        kAudioObjectSystemObject,
                                        propertyAddress(kAudioHardwarePropertyProcessObjectList),
                                        queue_,
                                        weakTask(this, [](ProcessMonitor& monitor) {
                                            monitor.queue_->assertCurrent();
                                            monitor.reloadProcessList();
                                        }));
    reloadProcessList();
}

void ProcessMonitor::stopOnQueue()
{
    listListener_ = nullptr;
    processListeners_.clear();
    identities_.clear();
    order_.clear();
}

void ProcessMonitor::reloadProcessList()
{
    auto list = objectIDs(
        *context_.hardware, kAudioObjectSystemObject, kAudioHardwarePropertyProcessObjectList);
    forgetAllBut(list);
    for (const AudioObjectID process : list) {
        if (!processListeners_.contains(process)) {
            remember(process);
        }
    }
    order_ = std::move(list);
    schedulePublish();
}

void ProcessMonitor::forgetAllBut(const std::vector<AudioObjectID>& list)
{
    const std::set<AudioObjectID> current(list.begin(), list.end());
    const auto isGone = [&current](const auto& entry) {
        return !current.contains(entry.first);
    };
    std::erase_if(processListeners_, isGone);
    std::erase_if(identities_, isGone);
}

void ProcessMonitor::remember(AudioObjectID process)
{
    HALListeners& listeners = processListeners_[process];
    for (const auto& address :
         {propertyAddress(kAudioProcessPropertyIsRunning),
          propertyAddress(kAudioProcessPropertyDevices, kAudioObjectPropertyScopeWildcard)})
    {
        auto listener = HALListener::create(context_.hardware,
                                            process,
                                            address,
                                            queue_,
                                            weakTask(this, [](ProcessMonitor& monitor) {
                                                monitor.queue_->assertCurrent();
                                                monitor.schedulePublish();
                                            }));
        if (listener) {
            listeners.push_back(std::move(listener));
        }
    }
    if (auto identity = readIdentity(process)) {
        identities_.insert_or_assign(process, *std::move(identity));
    }
}

std::optional<ProcessMonitor::Identity> ProcessMonitor::readIdentity(AudioObjectID process) const
{
    const auto pid = readProperty<std::int32_t>(
        *context_.hardware, process, propertyAddress(kAudioProcessPropertyPID));
    if (!pid || *pid <= 0) {
        return std::nullopt;
    }
    return Identity{*pid,
                    stringProperty(*context_.hardware, process, kAudioProcessPropertyBundleID),
                    parentPID(*context_.processLookup, *pid),
                    responsiblePID(*context_.processLookup, *pid)};
}

void ProcessMonitor::schedulePublish()
{
    if (std::exchange(isPublishScheduled_, true)) {
        return;
    }
    publishTimer_ = queue_->after(publishDelay, weakTask(this, [](ProcessMonitor& monitor) {
                                      monitor.queue_->assertCurrent();
                                      // A change during the reads must cause another publication.
                                      monitor.isPublishScheduled_ = false;
                                      monitor.publish();
                                  }));
}

void ProcessMonitor::publish()
{
    std::vector<AudioProcess> list;
    for (const AudioObjectID process : order_) {
        const auto identity = identities_.find(process);
        if (identity != identities_.end()) {
            list.push_back(readProcess(process, identity->second));
        }
    }
    processes_.send(std::move(list));
}

AudioProcess ProcessMonitor::readProcess(AudioObjectID process, const Identity& identity) const
{
    AudioHardware& hardware = *context_.hardware;
    AudioProcess result;
    result.id = process;
    result.pid = identity.pid;
    result.bundleID = identity.bundleID;
    result.isRunningOutput = isSet(hardware, process, kAudioProcessPropertyIsRunningOutput);
    result.isRunningInput = isSet(hardware, process, kAudioProcessPropertyIsRunningInput);
    result.parentPID = identity.parentPID;
    result.responsiblePID = identity.responsiblePID;
    result.outputDeviceIDs =
        objectIDs(hardware, process, kAudioProcessPropertyDevices, kAudioObjectPropertyScopeOutput);
    return result;
}

} // namespace fadewell
