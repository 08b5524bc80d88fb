#pragma once

#include "audio/TapManager.h"
#include "tests/audio/EngineTest.h"

namespace fadewell {

/// A manager, and cycles of sound twice a second.
class TapManagerFixture : public PlayingAppTest {
protected:
    void SetUp() override
    {
        PlayingAppTest::SetUp();
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

    /// One app plays, and every check of its beginning is over.
    void play()
    {
        update({request()});
        time_->advance(3);
        (void)log_.take();
    }

    /// The log of the manager, without what says that sound flows.
    [[nodiscard]] Lines lines()
    {
        Lines lines = log_.take();
        std::erase(lines, "taps info: app: audio is flowing");
        return lines;
    }

    /// The aggregate of the only path reads as dead.
    void breakPath()
    {
        hardware_->setAlive(aggregateID(), false);
        time_->run();
    }

    Timer cycles_;
    std::shared_ptr<TapManager> manager_ = TapManager::create(context_);
    std::shared_ptr<std::vector<TapEvent>> events_ = collect(manager_->events());
};

} // namespace fadewell
