#include "audio/TapTargets.h"
#include "tests/audio/TapManagerFixture.h"

#include <tuple>

namespace fadewell {
namespace {

using enum HardwareCall;

using testing::ElementsAre;
using testing::IsEmpty;

class TapManagerTest : public TapManagerFixture {};

TEST_F(TapManagerTest, CarriesOutEachWishAndSaysSo)
{
    const auto other = hardware_->addProcess({.pid = 20});
    TapRequest wish = request();
    const std::tuple<std::function<void()>, std::string, Lines> steps[] = {
        {[] {},
         "createProcessTap createAggregateDevice createIOProc start",
         {"taps info: Tapping app on speakers (0 ms)"}},
        {[] {}, "", {}},
        {[&] { wish.gain = 0.25; }, "", {}},
        {[&] { wish.duck = 0.2; }, "", {"taps info: app lowered for call mode"}},
        {[&] { wish.duck = 1.0; }, "", {"taps info: app back from call mode"}},
        {[&] {
             wish.processObjectIDs = {other, process_};
         },
         "setTapDescription",
         {}},
        {[&] { wish.isPlaying = false; }, "stop", {"taps info: Paused app"}},
        {[&] { wish.isPlaying = true; }, "start", {"taps info: Resumed app"}},
        {[&] { wish.preferredOutputUID = "headset"; },
         "createAggregateDevice createIOProc start stop destroyIOProc destroyAggregateDevice",
         {"taps info: Moved app to headset"}},
        {[&] { wish.appID = "nobody"; },
         "stop destroyIOProc destroyAggregateDevice destroyProcessTap "
         "createProcessTap createAggregateDevice createIOProc start",
         {"taps info: Released app", "taps info: Tapping nobody on headset (0 ms)"}},
    };
    for (const auto& [change, calls, log] : steps) {
        change();
        update({wish});
        EXPECT_EQ(changes(), calls);
        EXPECT_EQ(log_.take(), log) << calls;
    }
}

TEST_F(TapManagerTest, ChoosesTheOutputOfEachRequest)
{
    const auto own = addOutput("app.fadewell.tap.1");
    const auto nameless = hardware_->addDevice({.uid = ""});
    const auto input =
        hardware_->addDevice({.uid = "microphone", .outputStreams = 0, .inputStreams = 1});
    const std::tuple<std::vector<AudioObjectID>, std::optional<std::string>, std::string, bool>
        cases[] = {
            {{}, std::nullopt, "speakers", false},
            {{headset_, speakers_}, std::nullopt, "headset", false},
            {{own, nameless, 9999}, std::nullopt, "speakers", false},
            {{own, nameless, headset_}, std::nullopt, "headset", false},
            {{speakers_}, "headset", "headset", true},
            {{headset_}, "headset", "headset", false},
            {{headset_}, "speakers", "speakers", true},
            {{headset_}, "unplugged", "headset", false},
            {{headset_}, "app.fadewell.tap.1", "headset", false},
            {{headset_}, "microphone", "headset", false},
            {{input}, std::nullopt, "microphone", false},
        };
    for (const auto& [playsTo, preferred, uid, isRerouted] : cases) {
        TapRequest wish = request(0.25);
        wish.outputDeviceIDs = playsTo;
        wish.preferredOutputUID = preferred;
        wish.duck = 0.5;
        const TapTarget expected{"app", {process_}, 0.25, 0.5, true, uid, isRerouted};
        EXPECT_EQ(makeTapTargets(*hardware_, std::vector{wish}), std::vector{expected})
            << uid << preferred.value_or(" by itself");
    }
    hardware_->setDefaultOutput(kAudioObjectUnknown);
    EXPECT_EQ(makeTapTargets(*hardware_, {}), std::nullopt);
}

TEST_F(TapManagerTest, LoweredAppFadesDownFromItsFullLevel)
{
    TapRequest wish = request(0.5);
    wish.duck = 0.0;
    cycles_.cancel();
    update({wish});
    const auto heard = hardware_->renderCycle(64);
    EXPECT_GT(heard.at(speakers_).left.at(0), 0.49F);
}

TEST_F(TapManagerTest, FailedStepReleasesTheAppAndExcludesItForTenSeconds)
{
    TapRequest paused = request();
    paused.isPlaying = false;
    TapRequest moved = request();
    moved.preferredOutputUID = "headset";
    TapRequest grown = request();
    grown.processObjectIDs = {process_, process_};
    const std::tuple<TapRequest, TapRequest, HardwareCall, std::string> cases[] = {
        {request(1.0), request(), createProcessTap, "Create tap"},
        {request(1.0), request(), start, "Start"},
        {paused, request(), start, "Start"},
        {request(), moved, createAggregateDevice, "Create aggregate device"},
        {request(), moved, createIOProc, "Create IOProc"},
        {request(), moved, start, "Start"},
        {request(), grown, setTapDescription, "Update tap processes"},
    };
    for (const auto& [before, wish, call, error] : cases) {
        update({before});
        (void)log_.take();
        fail(call);
        update({wish});
        EXPECT_EQ(log_.take(), Lines{"taps error: app: " + error + " failed: 'nope' (1852797029)"});
        EXPECT_EQ(hardware_->made(), Made{}) << error;
        time_->advance(9);
        update({wish});
        EXPECT_EQ(hardware_->made(), Made{}) << error;
        time_->advance(2);
        EXPECT_EQ(hardware_->made(), Made{}) << "no timer ends the exclusion";
        update({wish});
        EXPECT_EQ(hardware_->made().taps, 1U) << error;
        update({});
        time_->advance(2);
    }
}

TEST_F(TapManagerTest, AppAtUnityIsReleasedAfterItsGrace)
{
    update({request()});
    update({request(1.0)});
    time_->advance(3.04);
    EXPECT_EQ(hardware_->made().taps, 1U);
    time_->advance(0.02);
    EXPECT_EQ(hardware_->made(), Made{});
}

TEST_F(TapManagerTest, WithoutADefaultOutputEverythingIsReleasedSilently)
{
    update({request(), request(0.5, "other")});
    (void)log_.take();
    hardware_->setDefaultOutput(kAudioObjectUnknown);
    update({request(), request(0.5, "other")});
    EXPECT_EQ(hardware_->made(), Made{});
    EXPECT_THAT(log_.take(), IsEmpty());

    hardware_->setDefaultOutput(speakers_);
    update({request()});
    EXPECT_EQ(hardware_->made(), Made{}) << "in its cooldown";
    time_->advance(1.54);
    EXPECT_EQ(hardware_->made(), Made{});
    time_->advance(0.02);
    EXPECT_EQ(hardware_->made().taps, 1U) << "without another update";
}

TEST_F(TapManagerTest, StopAllEndsEverything)
{
    manager_->stopAll();
    EXPECT_THAT(log_.take(), IsEmpty());
    update({request(), request(0.5, "other")});
    (void)log_.take();
    manager_->stopAll();
    EXPECT_THAT(log_.take(), ElementsAre("taps notice: Stopped 2 sessions"));
    EXPECT_EQ(hardware_->made(), Made{});
    time_->advance(60);
    EXPECT_EQ(hardware_->made(), Made{}) << "no request is left";
    EXPECT_THAT(log_.take(), IsEmpty());
    cycles_.cancel();
    EXPECT_EQ(time_->pendingTasks(), 0U);
}

TEST_F(TapManagerTest, RemovesOnlyItsOwnLeftovers)
{
    EXPECT_EQ(TapManager::removeLeftovers(*hardware_), 0);
    EXPECT_THAT(log_.take(), IsEmpty());

    for (const char* uid : {"app.fadewell.tap.1", "app.fadewell.tap.2", "org.example.tap"}) {
        AggregateDescription aggregate;
        aggregate.uid = uid;
        hardware_->plantAggregate(aggregate);
    }
    for (const char* name :
         {"Fadewell org.example", "Fadewell permission check", "Fadewell", "fadewell x"})
    {
        TapDescription tap;
        tap.name = name;
        hardware_->plantTap(tap);
    }
    fail(destroyAggregateDevice);
    fail(tapDescription);
    EXPECT_EQ(TapManager::removeLeftovers(*hardware_), 2);
    EXPECT_THAT(log_.take(), ElementsAre("taps notice: Removed 2 leftover audio objects"));
    EXPECT_EQ(TapManager::removeLeftovers(*hardware_), 2) << "what failed is tried again";
    EXPECT_EQ(hardware_->made(), (Made{2, 1, 0, 0}));
    EXPECT_EQ(taps()[0].name, "Fadewell") << "without the blank it isn't ours";
}

} // namespace
} // namespace fadewell
