#pragma once

#include "app/MixerModel.h"
#include "base/MemoryUserDefaults.h"
#include "platform/simulated/SimulatedStartGate.h"
#include "tests/audio/EngineTest.h"
#include "tests/support/SimulatedWorkspace.h"

namespace fadewell {

/// A model on the real engine over a simulated sound system with two outputs and a microphone.
class MixerModelFixture : public EngineTest {
protected:
    void SetUp() override
    {
        speakers_ = addOutput("speakers", "Speakers");
        headset_ = addOutput("headset", "Headset");
        SimulatedDevice microphone{.uid = "mic", .name = "Microphone", .outputStreams = 0};
        microphone.inputStreams = 1;
        microphone.inputVolume[0] = {0.8F, true};
        microphone_ = hardware_->addDevice(microphone);
        cycles_ = hardware_->runCycles(64, 0.5);
    }

    /// Settings that are to be loaded have to be in `defaults_` before.
    void createModel()
    {
        model_ = MixerModel::create({main_,
                                     workspace_,
                                     defaults_,
                                     ProcessMonitor::create(context_),
                                     DeviceMonitor::create(context_),
                                     TapManager::create(context_),
                                     MicrophoneController::create(context_, defaults_),
                                     std::make_shared<AppSettingsStore>(defaults_),
                                     gate_});
    }

    void launch()
    {
        createModel();
        onMain([this] { model_->start(); });
        time_->advance(0.2);
    }

    void onMain(Task task)
    {
        main_->async(std::move(task));
        time_->run();
    }

    /// Starts an application with one process.
    AudioObjectID addApp(std::int32_t pid,
                         const std::string& bundleID,
                         const std::string& name,
                         bool playing = true)
    {
        workspace_->running.push_back({.pid = pid, .bundleID = bundleID, .name = name});
        return addProcess(pid, playing);
    }

    AudioObjectID addProcess(std::int32_t pid, bool playing)
    {
        const auto process = hardware_->addProcess({.pid = pid, .isRunningOutput = playing});
        time_->advance(0.1);
        return process;
    }

    void setRunning(AudioObjectID process, bool output, bool input)
    {
        hardware_->setRunning(process, output, input);
        time_->advance(0.1);
    }

    /// How loud a process that plays at 1 is heard, once every ramp has ended.
    double heard(AudioObjectID process, AudioObjectID device)
    {
        const std::vector<float> full(4 * 48000, 1.0F);
        auto sound = hardware_->renderCycle(4 * 48000, {{process, {full, full}}});
        return sound[device].left.empty() ? 0 : sound[device].left.back();
    }

    [[nodiscard]] std::optional<float> microphoneVolume()
    {
        const AudioObjectPropertyAddress address{kAudioDevicePropertyVolumeScalar,
                                                 kAudioObjectPropertyScopeInput};
        return readProperty<float>(*hardware_, microphone_, address);
    }

    [[nodiscard]] std::optional<AppRowState> row(const std::string& appID) const
    {
        for (const auto& each : model_->apps.get()) {
            if (each.id == appID) {
                return each;
            }
        }
        return std::nullopt;
    }

    /// The model's own lines since the last call.
    [[nodiscard]] Lines mixerLines()
    {
        auto lines = log_.take();
        std::erase_if(lines, [](const auto& line) { return !line.starts_with("mixer "); });
        return lines;
    }

    AudioObjectID speakers_ = 0;
    AudioObjectID headset_ = 0;
    AudioObjectID microphone_ = 0;
    Timer cycles_;
    std::shared_ptr<SimulatedStartGate> gate_ = std::make_shared<SimulatedStartGate>();
    std::shared_ptr<SimulatedWorkspace> workspace_ = std::make_shared<SimulatedWorkspace>();
    std::shared_ptr<MemoryUserDefaults> defaults_ = std::make_shared<MemoryUserDefaults>();
    std::shared_ptr<MixerModel> model_;
};

} // namespace fadewell
