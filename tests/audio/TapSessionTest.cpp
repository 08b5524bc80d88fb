#include "audio/TapSession.h"

#include "audio/CoreAudioError.h"
#include "tests/audio/EngineTest.h"

#include <algorithm>

namespace fadewell {
namespace {

using testing::ElementsAre;

class TapSessionTest : public EngineTest {
protected:
    void SetUp() override
    {
        speakers_ = addOutput("speakers");
        headset_ = addOutput("headset");
        hardware_->setDefaultOutput(speakers_);
        process_ = hardware_->addProcess({.pid = 10, .isRunningOutput = true});
    }

    std::shared_ptr<TapSession> make(double gain = 0.5)
    {
        return TapSession::create(context_, "org.example", {process_}, "speakers", gain);
    }

    /// The description of the error that `work` throws.
    template <class Work>
    static std::string failure(Work&& work)
    {
        try {
            work();
        } catch (const CoreAudioError& error) {
            return error.description();
        }
        return "no error";
    }

    [[nodiscard]] Lines changesOf(const std::function<void()>& work)
    {
        hardware_->calls().clear();
        work();
        return hardware_->calls().changes();
    }

    AudioObjectID speakers_ = 0;
    AudioObjectID headset_ = 0;
    AudioObjectID process_ = 0;
};

TEST_F(TapSessionTest, BuildsAPrivateTapAndAnAggregateOverIt)
{
    const auto session = make();
    EXPECT_EQ(hardware_->made(), (SimulatedHardware::Made{1, 1, 1, 0}));
    EXPECT_FALSE(session->isRunning()) << "built, not started";
    EXPECT_EQ(session->duck(), 1.0);

    ASSERT_EQ(taps().size(), 1U);
    const TapDescription tap = taps()[0];
    EXPECT_EQ(tap.uuid.size(), 36U);
    EXPECT_EQ(tap,
              (TapDescription{tap.uuid,
                              "Fadewell org.example",
                              {process_},
                              false,
                              true,
                              TapMuteBehavior::mutedWhenTapped}));
    ASSERT_EQ(aggregates().size(), 1U);
    const AggregateDescription aggregate = aggregates()[0];
    EXPECT_TRUE(aggregate.uid.starts_with("app.fadewell.tap."));
    EXPECT_EQ(aggregate.uid.size(), std::string("app.fadewell.tap.").size() + 36);
    EXPECT_EQ(aggregate.uid.find(tap.uuid), std::string::npos) << "a UUID of its own";
    EXPECT_EQ(aggregate,
              (AggregateDescription{"Fadewell",
                                    aggregate.uid,
                                    "speakers",
                                    true,
                                    false,
                                    false,
                                    {{"speakers"}},
                                    {{tap.uuid, true}}}));
}

TEST_F(TapSessionTest, EachFailedStepHasItsLabelAndLeavesNothingBehind)
{
    const auto never = FaultPlan::always;
    SimulatedTapFormat integer;
    integer.format.mFormatFlags = 0;
    SimulatedTapFormat wide;
    wide.format.mBitsPerChannel = 64;
    SimulatedTapFormat encoded;
    encoded.format.mFormatID = fourCharCode("ac-3");
    SimulatedTapFormat late;
    late.readsUntilReady = 50;
    const auto fail = [this](HardwareCall call, int times = 1, AudioObjectPropertySelector of = 0) {
        hardware_->faults().failNext(call, kAudioHardwareIllegalOperationError, times, of);
    };
    const struct {
        std::function<void()> arrange;
        const char* description;
        double seconds;
    } cases[] = {
        {[&] { fail(HardwareCall::createProcessTap); },
         "Create tap failed: 'nope' (1852797029)",
         0},
        {[&] { hardware_->faults().giveNothing(HardwareCall::createProcessTap); },
         "Create tap (no object) failed: '!obj' (560947818)",
         0},
        {[&] { fail(HardwareCall::getData, never, kAudioTapPropertyFormat); },
         "Read tap format failed: 'nope' (1852797029)",
         0.5},
        {[&] { hardware_->setNextTapFormat(late); },
         "Read tap format failed: 'stop' (1937010544)",
         0.5},
        {[&] { hardware_->setNextTapFormat(encoded); },
         "Read tap format failed: 'stop' (1937010544)",
         0.5},
        {[&] { hardware_->setNextTapFormat(integer); },
         "Tap format is not 32-bit float failed: 'unop' (1970171760)",
         0},
        {[&] { hardware_->setNextTapFormat(wide); },
         "Tap format is not 32-bit float failed: 'unop' (1970171760)",
         0},
        {[&] { fail(HardwareCall::createAggregateDevice); },
         "Create aggregate device failed: 'nope' (1852797029)",
         0},
        {[&] { hardware_->setNextReadiness({.inputAfter = 9, .outputAfter = 0}); },
         "Wait for aggregate device failed: 'stop' (1937010544)",
         1},
        {[&] { hardware_->setNextReadiness({.inputAfter = 0, .outputAfter = 9}); },
         "Wait for aggregate device failed: 'stop' (1937010544)",
         1},
        {[&] { fail(HardwareCall::createIOProc); }, "Create IOProc failed: 'nope' (1852797029)", 0},
    };
    for (const auto& [arrange, description, seconds] : cases) {
        arrange();
        const double began = time_->uptime();
        EXPECT_EQ(failure([this] { (void)make(); }), description);
        EXPECT_NEAR(time_->uptime() - began, seconds, 1e-6) << description;
        EXPECT_EQ(hardware_->made(), SimulatedHardware::Made{}) << description;
        hardware_->faults().clear();
        hardware_->setNextTapFormat({});
        hardware_->setNextReadiness({});
    }
}

TEST_F(TapSessionTest, WaitsForALateFormatAndALateAggregate)
{
    SimulatedTapFormat late;
    late.readsUntilReady = 49;
    hardware_->setNextTapFormat(late);
    hardware_->setNextReadiness({.inputAfter = 0.3, .outputAfter = 0.6});
    const double began = time_->uptime();
    const auto session = make();
    EXPECT_NEAR(time_->uptime() - began, 0.49 + 0.6, 0.011);
    EXPECT_TRUE(session->output());
}

TEST_F(TapSessionTest, TearsDownInOrderAndOnlyOnce)
{
    const Lines inOrder{"stop", "destroyIOProc", "destroyAggregateDevice", "destroyProcessTap"};
    auto session = make();
    session->start();
    session->monitor(main_, [] {});
    EXPECT_EQ(changesOf([&] { session->teardown(); }), inOrder);
    EXPECT_EQ(changesOf([&] { session->teardown(); }), Lines{});
    EXPECT_EQ(hardware_->made(), SimulatedHardware::Made{});

    session = make();
    session->start();
    session->monitor(main_, [] {});
    EXPECT_EQ(changesOf([&] { session = nullptr; }), inOrder) << "dropped without teardown";
    EXPECT_EQ(hardware_->made(), SimulatedHardware::Made{});

    session = make();
    EXPECT_EQ(changesOf([&] { session->teardown(); }), Lines(inOrder.begin() + 1, inOrder.end()))
        << "what never ran is not stopped";
}

TEST_F(TapSessionTest, StartsOnceAndSurvivesAFailedStart)
{
    const auto session = make();
    hardware_->faults().failNext(HardwareCall::start, kAudioHardwareBadDeviceError);
    EXPECT_EQ(failure([&] { session->start(); }), "Start failed: '!dev' (560227702)");
    EXPECT_FALSE(session->isRunning());
    EXPECT_EQ(changesOf([&] {
                  session->start();
                  session->start();
                  session->output()->stop();
                  session->output()->stop();
                  session->start();
              }),
              (Lines{"start", "stop", "start"}));
}

TEST_F(TapSessionTest, ChangesProcessesInPlace)
{
    const auto session = make();
    const auto other = hardware_->addProcess({.pid = 20});
    EXPECT_EQ(changesOf([&] {
                  session->setProcesses({other, process_});
              }),
              Lines{"setTapDescription"});
    EXPECT_THAT(session->processObjectIDs(), ElementsAre(other, process_));
    EXPECT_THAT(taps()[0].processes, ElementsAre(other, process_));

    hardware_->faults().failNext(HardwareCall::setTapDescription, kAudioHardwareBadObjectError);
    EXPECT_EQ(failure([&] { session->setProcesses({other}); }),
              "Update tap processes failed: '!obj' (560947818)");
    EXPECT_THAT(session->processObjectIDs(), ElementsAre(other, process_));
}

TEST_F(TapSessionTest, MovesWithoutAGapWhileRunning)
{
    const auto session = make();
    EXPECT_EQ(
        changesOf([&] { session->moveOutput("headset"); }),
        (Lines{"createAggregateDevice", "createIOProc", "destroyIOProc", "destroyAggregateDevice"}))
        << "a stopped path stays stopped";
    EXPECT_FALSE(session->isRunning());

    session->start();
    EXPECT_EQ(changesOf([&] { session->moveOutput("speakers"); }),
              (Lines{"createAggregateDevice",
                     "createIOProc",
                     "start",
                     "stop",
                     "destroyIOProc",
                     "destroyAggregateDevice"}));
    EXPECT_TRUE(session->isRunning());
    EXPECT_EQ(session->output()->deviceUID(), "speakers");
    EXPECT_EQ(aggregates().at(0).taps.at(0).uid, taps().at(0).uuid) << "the same tap";
}

TEST_F(TapSessionTest, FailedMoveKeepsTheOldPathRunning)
{
    const auto session = make();
    session->start();
    const Output* old = session->output();
    for (const auto call :
         {HardwareCall::createAggregateDevice, HardwareCall::createIOProc, HardwareCall::start})
    {
        hardware_->faults().failNext(call, kAudioHardwareIllegalOperationError);
        EXPECT_NE(failure([&] { session->moveOutput("headset"); }), "no error") << name(call);
        EXPECT_EQ(session->output(), old);
        EXPECT_TRUE(session->isRunning());
        EXPECT_EQ(hardware_->made(), (SimulatedHardware::Made{1, 1, 1, 0})) << name(call);
    }
}

TEST_F(TapSessionTest, NewOutputKeepsGainDuckAndWatching)
{
    const auto session = make(1.0);
    int problems = 0;
    session->monitor(main_, [&problems] { ++problems; });
    EXPECT_EQ(hardware_->made().listeners, 5U);
    session->setGain(0.5);
    session->setDuck(0.5);
    session->moveOutput("headset");
    EXPECT_EQ(hardware_->made().listeners, 5U) << "in place of the old ones";
    hardware_->setSampleRate(speakers_, 44100);
    time_->run();
    EXPECT_EQ(problems, 0);
    hardware_->setSampleRate(headset_, 44100);
    time_->run();
    EXPECT_EQ(problems, 1);

    session->start();
    hardware_->setSound(process_, 1, 1);
    const auto heard = hardware_->renderCycle(64);
    EXPECT_FLOAT_EQ(heard.at(headset_).left.at(0), 0.25F) << "no ramp from full level";
    EXPECT_TRUE(session->output()->hasSignal());
    EXPECT_EQ(session->output()->callbackCount(), 1U);
}

TEST_F(TapSessionTest, UnityIsNotedWhileBothFactorsAreExactlyOne)
{
    const auto session = make(1.0);
    EXPECT_EQ(session->unitySince(), std::nullopt);
    session->updateUnity(5);
    session->updateUnity(6);
    EXPECT_EQ(session->unitySince(), 5);
    session->setDuck(0.99);
    session->updateUnity(7);
    EXPECT_EQ(session->unitySince(), std::nullopt);
}

TEST_F(TapSessionTest, DeviceIsGoneOnlyWhenSomethingSaysSo)
{
    const auto session = make();
    const Output& output = *session->output();
    EXPECT_FALSE(output.deviceIsGone());
    hardware_->faults().failNext(
        HardwareCall::getData, kAudioHardwareBadObjectError, 2, kAudioDevicePropertyDeviceIsAlive);
    EXPECT_FALSE(output.deviceIsGone()) << "a failed read says nothing";
    hardware_->setAlive(speakers_, false);
    EXPECT_TRUE(output.deviceIsGone());
    hardware_->setAlive(speakers_, true);
    EXPECT_FALSE(output.deviceIsGone());
    const auto aggregate = deviceID(*hardware_, aggregates().at(0).uid);
    ASSERT_TRUE(aggregate);
    hardware_->setProperty(
        *aggregate, propertyAddress(kAudioDevicePropertyDeviceIsAlive), bytesOf(0U));
    EXPECT_TRUE(output.deviceIsGone());
    hardware_->setProperty(
        *aggregate, propertyAddress(kAudioDevicePropertyDeviceIsAlive), bytesOf(1U));
    hardware_->removeDevice(speakers_);
    time_->run();
    EXPECT_TRUE(output.deviceIsGone()) << "its UID leads nowhere";
}

} // namespace
} // namespace fadewell
