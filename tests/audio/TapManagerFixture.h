#pragma once

#include "audio/TapManager.h"
#include "tests/audio/EngineTest.h"

namespace fadewell {

/// A manager over two outputs and one app that plays sound to the default one.
class TapManagerFixture : public EngineTest {
protected:
    using Made = SimulatedHardware::Made;

    void SetUp() override
    {
        speakers_ = addOutput("speakers");
        headset_ = addOutput("headset");
        hardware_->setDefaultOutput(speakers_);
        process_ = hardware_->addProcess({.pid = 10, .isRunningOutput = true});
        hardware_->setSound(process_, 1.0F, 1.0F);
        cycles_ = hardware_->runCycles(64, 0.5);
    }

    [[nodiscard]] TapRequest request(double gain = 0.5, const std::string& appID = "app") const
    {
        TapRequest request;
        request.appID = appID;
        request.processObjectIDs = {process_};
        request.gain = gain;
        request.isPlaying = true;
        request.outputDeviceIDs = {speakers_};
        return request;
    }

    void update(const std::vector<TapRequest>& requests)
    {
        manager_->update(requests);
        time_->run();
    }

    /// The log of the manager, without what says that sound flows.
    [[nodiscard]] Lines lines()
    {
        Lines lines = log_.take();
        std::erase(lines, "taps info: app: audio is flowing");
        return lines;
    }

    [[nodiscard]] AudioObjectID aggregateID(std::size_t index = 0) const
    {
        return deviceID(*hardware_, aggregates().at(index).uid).value_or(0);
    }

    /// Each call is noticed: liveness is told apart by its value.
    void breakPath()
    {
        hardware_->setProperty(
            aggregateID(), propertyAddress(kAudioDevicePropertyDeviceIsAlive), bytesOf(0U));
        time_->run();
    }

    AudioObjectID speakers_ = 0;
    AudioObjectID headset_ = 0;
    AudioObjectID process_ = 0;
    Timer cycles_;
    std::shared_ptr<TapManager> manager_ = TapManager::create(context_);
    std::shared_ptr<std::vector<TapEvent>> events_ = collect(manager_->events());
};

} // namespace fadewell
