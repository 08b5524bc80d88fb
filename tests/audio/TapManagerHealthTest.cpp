#include "tests/audio/TapManagerFixture.h"

namespace fadewell {
namespace {

using enum HardwareCall;

using testing::ElementsAre;
using testing::IsEmpty;

class TapManagerHealthTest : public TapManagerFixture {
protected:
    const std::string wentAway_ = "taps notice: Rebuilding app: output device went away";
    const std::string stalled_ = "taps notice: Rebuilding app: audio stalled";
};

TEST_F(TapManagerHealthTest, SaysOnceWhetherAudioFlowsAndElseLeavesASilentAppAlone)
{
    for (const bool isSilent : {true, false}) {
        const float sound = isSilent ? 0.0F : 1.0F;
        hardware_->setSound(process_, sound, sound);
        update({request()});
        (void)log_.take();
        hardware_->setSampleRate(speakers_, 44100 + sound); // Alone no reason to rebuild.
        time_->advance(1.9);
        EXPECT_THAT(log_.take(), IsEmpty());
        time_->advance(20);
        EXPECT_EQ(log_.take(), isSilent ? Lines{} : Lines{"taps info: app: audio is flowing"});
        EXPECT_EQ(hardware_->made().taps, 1U);
        update({});
        time_->advance(2);
    }
}

TEST_F(TapManagerHealthTest, MissingPermissionReleasesEveryAppUntilItIsGranted)
{
    hardware_->setCapturePermitted(false);
    update({request(), request(0.5, "other")});
    (void)log_.take();
    time_->advance(2.1);
    EXPECT_THAT(*events_, ElementsAre(TapEvent::permissionDenied));
    EXPECT_THAT(log_.take(),
                ElementsAre("taps notice: No permission to capture audio; releasing all apps"));
    EXPECT_EQ(hardware_->made(), Made{});

    update({request(), request(0.5, "new")});
    time_->advance(30);
    EXPECT_EQ(hardware_->made(), Made{}) << "every app is excluded";
    EXPECT_THAT(*events_, ElementsAre(TapEvent::permissionDenied)) << "and told only once";

    hardware_->setCapturePermitted(true);
    time_->advance(3);
    EXPECT_THAT(*events_, ElementsAre(TapEvent::permissionDenied, TapEvent::permissionGranted));
    EXPECT_THAT(log_.take(),
                ElementsAre("taps notice: Audio capture permission granted",
                            "taps info: Tapping app on speakers (0 ms)",
                            "taps info: Tapping new on speakers (0 ms)"));
}

TEST_F(TapManagerHealthTest, FlowIsCheckedOnlyWhileTheSameSessionRuns)
{
    update({request()});
    TapRequest paused = request();
    paused.isPlaying = false;
    update({paused});
    hardware_->setCapturePermitted(false);
    time_->advance(5);
    EXPECT_THAT(*events_, IsEmpty()) << "a paused output proves nothing";
}

TEST_F(TapManagerHealthTest, ManyNotificationsGiveOneRebuild)
{
    play();
    breakPath();
    time_->advance(0.1);
    hardware_->setSampleRate(speakers_, 44100);
    hardware_->setSampleRate(aggregateID(), 44100);
    time_->advance(0.14);
    EXPECT_THAT(log_.take(), IsEmpty());
    hardware_->calls().clear();
    time_->advance(0.02);
    EXPECT_THAT(log_.take(), ElementsAre(wentAway_));
    EXPECT_EQ(changes(),
              "createAggregateDevice createIOProc start stop destroyIOProc destroyAggregateDevice");
    EXPECT_EQ(aggregates().at(0).master, "speakers");
    time_->advance(1);
    EXPECT_THAT(log_.take(), IsEmpty());
}

TEST_F(TapManagerHealthTest, LostDeviceMovesTheAppToWhereItPlaysNow)
{
    TapRequest wish = request();
    wish.preferredOutputUID = "headset";
    update({wish});
    time_->advance(3);
    (void)log_.take();
    hardware_->removeDevice(headset_);
    time_->advance(0.3);
    EXPECT_THAT(lines(), ElementsAre(wentAway_, "taps info: Moved app to speakers"));
    EXPECT_EQ(aggregates().size(), 1U) << "not built a second time";
    EXPECT_EQ(aggregates().at(0).master, "speakers");
}

TEST_F(TapManagerHealthTest, FourthRebuildInTenSecondsIsAFailure)
{
    play();
    for (int rebuild = 0; rebuild < 3; ++rebuild) {
        breakPath();
        time_->advance(1);
        EXPECT_THAT(lines(), ElementsAre(wentAway_));
    }
    breakPath();
    time_->advance(0.3);
    EXPECT_THAT(lines(),
                ElementsAre("taps error: app: Too many rebuilds failed: 'what' (2003329396)"));
    EXPECT_EQ(hardware_->made(), Made{});
    time_->advance(9.5);
    update({request()});
    EXPECT_EQ(hardware_->made(), Made{});
    time_->advance(1);
    update({request()});
    EXPECT_EQ(hardware_->made().taps, 1U);

    // Three in ten seconds are fine for as long as it takes.
    (void)lines();
    for (int rebuild = 0; rebuild < 6; ++rebuild) {
        time_->advance(4);
        breakPath();
    }
    time_->advance(1);
    EXPECT_EQ(lines(), Lines(6, wentAway_));
}

TEST_F(TapManagerHealthTest, StalledAudioIsRebuiltOnTheSameDevice)
{
    update({request()});
    time_->advance(7);
    EXPECT_EQ(lines(), Lines{"taps info: Tapping app on speakers (0 ms)"});
    cycles_.cancel();
    hardware_->calls().clear();
    time_->advance(1.9);
    EXPECT_THAT(lines(), IsEmpty());
    time_->advance(2.4);
    EXPECT_THAT(lines(), ElementsAre(stalled_));
    EXPECT_EQ(hardware_->calls().count(createAggregateDevice), 1);
    EXPECT_EQ(hardware_->calls().count(createProcessTap), 0);
    EXPECT_EQ(aggregates().at(0).master, "speakers");

    cycles_ = hardware_->runCycles(64, 0.5);
    time_->advance(20);
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(TapManagerHealthTest, PausedOutputIsNeverStalledAndNeedsNoWatchdog)
{
    TapRequest paused = request();
    paused.isPlaying = false;
    const auto other = request(0.5, "other");
    time_->advance(0.25); // So that no cycle falls between a tick and what is done around it.
    update({request(), other});
    time_->advance(4.05);
    (void)lines();
    update({paused, other});
    time_->advance(1.9);
    update({request(), other});
    time_->advance(10);
    EXPECT_THAT(lines(), ElementsAre("taps info: Paused app", "taps info: Resumed app"));

    update({paused});
    time_->advance(2); // The cooldown of the other one.
    cycles_.cancel();
    EXPECT_EQ(time_->pendingTasks(), 0U);
}

TEST_F(TapManagerHealthTest, BlockedQueueDoesNotLookLikeStalledAudio)
{
    cycles_ = hardware_->runCycles(64, 1.0);
    time_->advance(0.5);
    update({request()});
    time_->advance(5);
    (void)lines();
    // Blocks past the third tick, so that the fourth comes before the next cycle.
    hardware_->faults().delay(createIOProc, 2.8509);
    update({request(), request(0.5, "other")});
    time_->advance(10);
    EXPECT_THAT(lines(),
                ElementsAre("taps info: Tapping other on speakers (2850 ms)",
                            "taps info: other: audio is flowing"));
}

TEST_F(TapManagerHealthTest, PendingRebuildOutlivesTheLastOwner)
{
    update({request()});
    breakPath();
    hardware_->calls().clear();
    (void)lines();
    manager_ = nullptr;
    EXPECT_EQ(hardware_->made().taps, 1U) << "held by the pending rebuild";
    time_->advance(0.3);
    EXPECT_THAT(lines(), ElementsAre(wentAway_));
    EXPECT_EQ(hardware_->made(), Made{});
    cycles_.cancel();
    time_->advance(5);
    EXPECT_EQ(time_->pendingTasks(), 0U);
}

} // namespace
} // namespace fadewell
