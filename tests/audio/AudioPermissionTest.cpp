#include "audio/AudioPermission.h"

#include "tests/audio/EngineTest.h"

#include <tuple>

namespace fadewell {
namespace {

using enum HardwareCall;

using testing::ElementsAre;
using testing::IsEmpty;

class AudioPermissionTest : public EngineTest {
protected:
    void SetUp() override { hardware_->setDefaultOutput(addOutput("speakers")); }

    void request(double timeout)
    {
        answers_.clear();
        began_ = time_->uptime();
        pending_ = AudioPermission::request(context_, main_, timeout, [this](bool isAllowed) {
            answers_.push_back(isAllowed);
            answeredAfter_ = time_->uptime() - began_;
            EXPECT_EQ(hardware_->made(), Made{}) << "gone before the answer";
        });
        time_->run();
    }

    std::vector<bool> answers_;
    double began_ = 0;
    double answeredAfter_ = -1;
    Timer pending_;
};

TEST_F(AudioPermissionTest, OnlyTheOneStatusIsARefusal)
{
    EXPECT_TRUE(AudioPermission::check(*hardware_));
    request(60);
    EXPECT_THAT(answers_, ElementsAre(true)) << "without a prompt";
    EXPECT_EQ(hardware_->calls().count(createAggregateDevice), 0);
    const std::tuple<HardwareCall, OSStatus, bool> cases[] = {
        {setTapDescription, kAudioDevicePermissionsError, false},
        {setTapDescription, kAudioHardwareBadObjectError, true},
        {createProcessTap, kAudioHardwareIllegalOperationError, false},
    };
    for (const auto& [call, status, isAllowed] : cases) {
        hardware_->faults().failNext(call, status);
        EXPECT_EQ(AudioPermission::check(*hardware_), isAllowed) << name(call) << status;
        EXPECT_EQ(hardware_->made(), Made{});
    }
    hardware_->faults().giveNothing(createProcessTap);
    EXPECT_FALSE(AudioPermission::check(*hardware_));
}

TEST_F(AudioPermissionTest, AnswersAtTheFirstPollAfterTheUserDid)
{
    hardware_->setCapturePermitted(false);
    request(60);
    ASSERT_EQ(taps().size(), 1U);
    const std::string uuid = taps()[0].uuid;
    EXPECT_EQ(taps()[0], (TapDescription{uuid, "Fadewell permission request", {}, true, true, {}}));
    EXPECT_EQ(hardware_->calls().count(start), 1);
    ASSERT_EQ(aggregates().size(), 1U);
    EXPECT_EQ(aggregates()[0],
              (AggregateDescription{"Fadewell",
                                    "app.fadewell.tap." + uuid,
                                    "speakers",
                                    true,
                                    std::nullopt,
                                    std::nullopt,
                                    {{"speakers"}},
                                    {{uuid, std::nullopt}}}));
    time_->advance(2.4);
    hardware_->setCapturePermitted(true);
    time_->advance(0.5);
    EXPECT_THAT(answers_, IsEmpty());
    time_->advance(60);
    EXPECT_THAT(answers_, ElementsAre(true));
    EXPECT_DOUBLE_EQ(answeredAfter_, 3);
}

TEST_F(AudioPermissionTest, GivesUpWhenTheTimeIsOver)
{
    hardware_->setCapturePermitted(false);
    for (const auto& [timeout, answeredAfter] : {std::pair{60.0, 60.0}, {2.5, 3.0}, {0.0, 0.0}}) {
        request(timeout);
        time_->advance(100);
        EXPECT_THAT(answers_, ElementsAre(false));
        EXPECT_DOUBLE_EQ(answeredAfter_, answeredAfter);
    }
    EXPECT_EQ(time_->pendingTasks(), 0U);
}

TEST_F(AudioPermissionTest, FailedStepsAnswerNoAndLeaveNothing)
{
    const Lines message{"permission error: Couldn't set up the permission request"};
    const std::pair<HardwareCall, Lines> cases[] = {
        {createProcessTap, message}, {createAggregateDevice, {}}, {createIOProc, {}}, {start, {}}};
    hardware_->setCapturePermitted(false);
    for (const auto& [call, log] : cases) {
        fail(call, call == createProcessTap ? 2 : 1); // The first tap is that of check().
        request(60);
        EXPECT_THAT(answers_, ElementsAre(false)) << name(call);
        EXPECT_EQ(answeredAfter_, 0) << name(call);
        EXPECT_EQ(log_.take(), log) << name(call);
    }
    hardware_->setDefaultOutput(kAudioObjectUnknown);
    request(60);
    EXPECT_THAT(answers_, ElementsAre(false));
    EXPECT_EQ(log_.take(), message);
}

TEST_F(AudioPermissionTest, DroppedRequestAnswersNothingAndLeavesNothing)
{
    hardware_->setCapturePermitted(false);
    request(60);
    time_->advance(1.5);
    hardware_->calls().clear();
    pending_ = Timer();
    EXPECT_EQ(hardware_->made(), Made{});
    EXPECT_EQ(changes(), "stop destroyIOProc destroyAggregateDevice destroyProcessTap");
    EXPECT_EQ(time_->pendingTasks(), 0U);
    time_->advance(60);
    EXPECT_THAT(answers_, IsEmpty());
}

} // namespace
} // namespace fadewell
