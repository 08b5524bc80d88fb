#include "ui/preview/PreviewMixer.h"

#include "base/MemoryUserDefaults.h"
#include "base/ThreadQueue.h"
#include "control/QtMainQueue.h"

#include <utility>

namespace fadewell {
namespace {

constexpr int manyApps = 1000;

} // namespace

/// What plays without being controllable.
struct PreviewMixer::Untappable final : Tappability {
    std::vector<UntappableProcess> processes;

    [[nodiscard]] std::vector<UntappableProcess> untappable() override { return processes; }
};

PreviewMixer::PreviewMixer(Scene scene)
    : mainQueue_(std::make_shared<QtMainQueue>(clock_))
    , hardware_(SimulatedHardware::create(std::make_shared<ThreadQueue>("simulation", clock_)))
    , untappable_(std::make_shared<Untappable>())
{
    hardware_->setCapturePermitted(scene != Scene::permission);
    addDevices(scene);
    addApps(scene);
    createModel();
    arrange(scene);
    cycles_ = hardware_->runCycles(1024, 0.1);
}

PreviewMixer::~PreviewMixer()
{
    model_->stop();
}

PanelWindow::Parts PreviewMixer::parts() const
{
    return {model_, workspace_, untappable_};
}

void PreviewMixer::addDevices(Scene scene)
{
    hardware_->addDevice({.uid = "speakers",
                          .name = "MacBook Pro Speakers",
                          .transport = OutputDevice::Transport::builtIn});
    hardware_->addDevice(
        {.uid = "airpods", .name = "AirPods Pro", .transport = OutputDevice::Transport::bluetooth});
    hardware_->addDevice(
        {.uid = "tv", .name = "LG TV", .transport = OutputDevice::Transport::hdmi});
    if (scene == Scene::devices) {
        hardware_->addDevice(
            {.uid = "dac",
             .name = "A converter with a remarkably long and descriptive product name (S/PDIF)",
             .transport = OutputDevice::Transport::usb});
        hardware_->addDevice(
            {.uid = "hall", .name = "Living Room", .transport = OutputDevice::Transport::airPlay});
    }
    SimulatedDevice microphone{.uid = "mic", .name = "Studio Microphone", .outputStreams = 0};
    microphone.inputStreams = 1;
    microphone.inputVolume[0] = {0.7F, true};
    hardware_->addDevice(microphone);
}

void PreviewMixer::addApps(Scene scene)
{
    if (scene == Scene::empty) {
        return;
    }
    if (scene == Scene::many) {
        addManyApps();
        return;
    }
    addApp("org.mozilla.firefox", "Firefox", "firefox");
    addApp("org.example.music", "Music", "multimedia-audio-player");
    if (scene == Scene::call) {
        addApp("us.zoom.xos", "Zoom", "Zoom", true);
    }
    if (scene == Scene::devices) {
        addApp("org.example.long",
               "An application with a <b>name</b> that is far too long for one row",
               "");
        workspace_->running.push_back({.pid = 50,
                                       .bundleID = "org.example.daw",
                                       .name = "Synthesizer Studio",
                                       .icon = AppIcon{}});
        AudioProcess process;
        process.id = 5000;
        process.pid = 50;
        process.isRunningOutput = true;
        untappable_->processes.push_back({process, UntappableReason::unmanaged});
    }
}

void PreviewMixer::addManyApps()
{
    for (int number = 1; number <= manyApps; ++number) {
        addApp("org.example.app" + std::to_string(number), "App " + std::to_string(number), "");
    }
}

AudioObjectID PreviewMixer::addApp(const std::string& id,
                                   const std::string& name,
                                   const std::string& icon,
                                   bool usesMicrophone)
{
    const auto pid = ++lastPID_;
    workspace_->running.push_back(
        {.pid = pid, .bundleID = id, .name = name, .icon = AppIcon{icon, {}}});
    return hardware_->addProcess(
        {.pid = pid, .bundleID = id, .isRunningOutput = true, .isRunningInput = usesMicrophone});
}

void PreviewMixer::createModel()
{
    const EngineContext engine{hardware_, lookup_, clock_, [clock = clock_](const auto& label) {
                                   return std::make_shared<ThreadQueue>(label, clock);
                               }};
    const auto defaults = std::make_shared<MemoryUserDefaults>();
    model_ =
        MixerModel::create({.mainQueue = mainQueue_,
                            .workspace = workspace_,
                            .defaults = defaults,
                            .monitor = ProcessMonitor::create(engine),
                            .devices = DeviceMonitor::create(engine),
                            .taps = TapManager::create(engine),
                            .microphoneController = MicrophoneController::create(engine, defaults),
                            .store = std::make_shared<AppSettingsStore>(defaults)});
    model_->start();
}

void PreviewMixer::arrange(Scene scene)
{
    model_->setVolume(0.7, "org.mozilla.firefox");
    model_->setVolume(0.35, "org.example.music");
    model_->setOutput("airpods", "AirPods Pro", "org.example.music");
    if (scene == Scene::muted) {
        model_->setMuted(true, "org.example.music");
        // Once the microphone is known.
        mainQueue_->after(0.5, [model = model_] { model->toggleMicrophone(); }).detach();
    }
    if (scene == Scene::devices) {
        model_->setOutput("gone", "Old Headphones", "org.mozilla.firefox");
    }
}

} // namespace fadewell
