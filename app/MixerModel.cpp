#include "app/MixerModel.h"

#include "core/AppGrouper.h"
#include "core/KnownCallApps.h"

#include <algorithm>
#include <cassert>
#include <span>

namespace fadewell {
namespace {

std::vector<RunningApp> groupable(const std::vector<RunningApplication>& applications)
{
    std::vector<RunningApp> result;
    result.reserve(applications.size());
    for (const auto& application : applications) {
        // An application without windows may well be the one that the user hears.
        result.push_back({application.pid, application.bundleID, /*isBackgroundOnly=*/false});
    }
    return result;
}

} // namespace

std::shared_ptr<MixerModel> MixerModel::create(Services services)
{
    return std::shared_ptr<MixerModel>(new MixerModel(std::move(services)));
}

MixerModel::MixerModel(Services services)
    : services_(std::move(services))
    , callMode_({KnownCallApps::all()})
    , directory_(services_.workspace)
{
    if (services_.store) {
        settings_ = services_.store->all();
    }
    callModeSettings.set(CallModeSettings::load(*services_.defaults));
    callMode_.configuration = configuration(callModeSettings.get());
    rememberedApps.set(rememberedAppsFromStore());
}

MixerModel::~MixerModel() = default;

void MixerModel::start()
{
    services_.mainQueue->assertCurrent();
    const auto& [queue, workspace, defaults, monitor, devices, taps, controller, store, startGate] =
        services_;
    if (!monitor || !devices || !taps || !controller || !tasks_.empty()) {
        return;
    }
    updateStartGate();
    monitor->start();
    devices->start();
    controller->start();
    tasks_.push_back(controller->states().consume(queue, weakly(&MixerModel::handleMicrophone)));
    tasks_.push_back(monitor->processes().consume(queue, weakly(&MixerModel::handleProcesses)));
    tasks_.push_back(devices->snapshots().consume(queue, weakly(&MixerModel::handleDevices)));
    tasks_.push_back(taps->events().consume(queue, weakly(&MixerModel::handleTapEvent)));
    launchObserver_ = workspace->onLaunch(weakly(&MixerModel::handleLaunch));
}

void MixerModel::stop()
{
    services_.mainQueue->assertCurrent();
    // The gate first: it would take over the apps that the taps let go of.
    if (services_.startGate) {
        services_.startGate->setGatedApps({});
        services_.startGate->setLoweredStarts(std::nullopt);
    }
    if (services_.taps) {
        services_.taps->stopAll();
    }
}

void MixerModel::handleMicrophone(MicrophoneState state)
{
    microphone.set(std::move(state));
}

void MixerModel::handleProcesses(std::vector<AudioProcess> processes)
{
    const auto playing = std::count_if(processes.begin(), processes.end(), [](const auto& process) {
        return process.isRunningOutput;
    });
    log_.debug("Snapshot: {} processes, {} playing", processes.size(), playing);
    auto grouped = AppGrouper::group(processes,
                                     groupable(services_.workspace->runningApplications()),
                                     AppGrouper::ignoredBundleIDs(),
                                     {services_.workspace->ownPID()});
    current_.clear();
    for (auto& app : grouped) {
        const auto id = app.id;
        const bool isNew = current_.emplace(id, std::move(app)).second;
        assert(isNew);
        static_cast<void>(isNew);
    }
    recentlyStarted_.update(currentAppIDs(&AudioApp::isPlaying));
    reevaluateCallMode();
}

void MixerModel::handleDevices(DeviceSnapshot snapshot)
{
    outputDevices.set(std::move(snapshot.outputs));
    defaultOutputUID.set(std::move(snapshot.defaultOutputUID));
    pushTapRequests();
}

void MixerModel::handleTapEvent(TapEvent event)
{
    needsAudioPermission.set(event == TapEvent::permissionDenied);
}

// A new application may own processes that nobody owned before.
void MixerModel::handleLaunch()
{
    services_.monitor->refresh();
}

std::optional<std::string> MixerModel::outputDeviceName(std::string_view uid) const
{
    const auto& devices = outputDevices.get();
    const auto found = std::find_if(
        devices.begin(), devices.end(), [uid](const auto& device) { return device.id == uid; });
    return found == devices.end() ? std::nullopt : std::optional(found->name);
}

AppAudioSettings MixerModel::settings(const std::string& appID) const
{
    services_.mainQueue->assertCurrent();
    const auto found = settings_.find(appID);
    return found == settings_.end() ? AppAudioSettings::default_() : found->second;
}

} // namespace fadewell
