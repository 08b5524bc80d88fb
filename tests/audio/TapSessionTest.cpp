#include "audio/TapSession.h"

#include "audio/CoreAudioError.h"
#include "tests/audio/EngineTest.h"

#include <tuple>

namespace fadewell {
namespace {

using enum HardwareCall;

using testing::ElementsAre;

class TapSessionTest : public PlayingAppTest {
protected:
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

    [[nodiscard]] std::string changesOf(const std::function<void()>& work)
    {
        hardware_->calls().clear();
        work();
        return changes();
    }
};

TEST_F(TapSessionTest, BuildsAPrivateTapAndAnAggregateOverIt)
{
    const auto session = make();
    EXPECT_EQ(hardware_->made(), (Made{1, 1, 1, 0}));
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
    SimulatedTapFormat integer;
    integer.format.mFormatFlags = 0;
    SimulatedTapFormat wide;
    wide.format.mBitsPerChannel = 64;
    SimulatedTapFormat encoded;
    encoded.format.mFormatID = fourCharCode("ac-3");
    SimulatedTapFormat late;
    late.readsUntilReady = 50;
    const std::string noFormat = "Read tap format failed: 'stop' (1937010544)";
    const std::string noFloat = "Tap format is not 32-bit float failed: 'unop' (1970171760)";
    const std::string noStreams = "Wait for aggregate device failed: 'stop' (1937010544)";
    const std::string refused = " failed: 'nope' (1852797029)";
    const std::tuple<std::function<void()>, std::string, double> cases[] = {
        {[&] { fail(createProcessTap); }, "Create tap" + refused, 0},
        {[&] { hardware_->faults().giveNothing(createProcessTap); },
         "Create tap (no object) failed: '!obj' (560947818)",
         0},
        {[&] { fail(getData, FaultPlan::always, kAudioTapPropertyFormat); },
         "Read tap format" + refused,
         0.5},
        {[&] { hardware_->setNextTapFormat(late); }, noFormat, 0.5},
        {[&] { hardware_->setNextTapFormat(encoded); }, noFormat, 0.5},
        {[&] { hardware_->setNextTapFormat(integer); }, noFloat, 0},
        {[&] { hardware_->setNextTapFormat(wide); }, noFloat, 0},
        {[&] { fail(createAggregateDevice); }, "Create aggregate device" + refused, 0},
        {[&] { hardware_->setNextReadiness({.inputAfter = 9}); }, noStreams, 1},
        {[&] { hardware_->setNextReadiness({.outputAfter = 9}); }, noStreams, 1},
        {[&] { fail(createIOProc); }, "Create IOProc" + refused, 0},
    };
    for (const auto& [arrange, description, seconds] : cases) {
        arrange();
        const double began = time_->uptime();
        EXPECT_EQ(failure([this] { (void)make(); }), description);
        EXPECT_NEAR(time_->uptime() - began, seconds, 1e-6) << description;
        EXPECT_EQ(hardware_->made(), Made{}) << description;
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
    const std::string inOrder = "destroyIOProc destroyAggregateDevice destroyProcessTap";
    const auto running = [this] {
        auto session = make();
        session->start();
        session->monitor(main_, [] {});
        return session;
    };
    auto session = running();
    EXPECT_EQ(changesOf([&] { session->teardown(); }), "stop " + inOrder);
    EXPECT_EQ(changesOf([&] { session->teardown(); }), "");
    EXPECT_EQ(hardware_->made(), Made{});
    session = running();
    EXPECT_EQ(changesOf([&] { session = nullptr; }), "stop " + inOrder) << "without teardown";
    EXPECT_EQ(hardware_->made(), Made{});
    session = make();
    EXPECT_EQ(changesOf([&] { session->teardown(); }), inOrder) << "what never ran isn't stopped";
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
    const auto heard = hardware_->renderCycle(64);
    EXPECT_FLOAT_EQ(heard.at(headset_).left.at(0), 0.25F) << "no ramp from full level";
    EXPECT_TRUE(session->output()->hasSignal());
    EXPECT_EQ(session->output()->callbackCount(), 1U);
}

TEST_F(TapSessionTest, DeviceIsGoneOnlyWhenSomethingSaysSo)
{
    const auto session = make();
    const Output& output = *session->output();
    EXPECT_FALSE(output.deviceIsGone());
    fail(getData, 2, kAudioDevicePropertyDeviceIsAlive);
    EXPECT_FALSE(output.deviceIsGone()) << "a failed read says nothing";
    hardware_->setAlive(speakers_, false);
    EXPECT_TRUE(output.deviceIsGone());
    hardware_->setAlive(speakers_, true);
    EXPECT_FALSE(output.deviceIsGone());
    hardware_->setAlive(aggregateID(), false);
    EXPECT_TRUE(output.deviceIsGone());
    hardware_->setAlive(aggregateID(), true);
    hardware_->removeDevice(speakers_);
    time_->run();
    EXPECT_TRUE(output.deviceIsGone()) << "its UID leads nowhere";
}

} // namespace
} // namespace fadewell
