#include "tests/audio/EngineTest.h"
#include "ui/onboarding/OnboardingModel.h"

namespace fadewell {
namespace {

using testing::IsEmpty;
using enum OnboardingModel::Permission;

class OnboardingTest : public EngineTest {
protected:
    void SetUp() override
    {
        addOutput("speakers");
        parts_.audioAccess = std::make_shared<AudioAccess>(context_, main_);
        parts_.systemPages = std::make_shared<SystemPages>(SystemPages::Environment{});
    }
    void TearDown() override
    {
        onMain([this] { model_.reset(); });
        EXPECT_THAT(taps(), IsEmpty());
        EXPECT_THAT(aggregates(), IsEmpty());
    }

    void onMain(Task task)
    {
        main_->async(std::move(task));
        time_->run();
    }

    /// At the permission step, after the first look.
    void reachPermission(bool isPermitted)
    {
        hardware_->setCapturePermitted(isPermitted);
        onMain([this] {
            model_ = std::make_unique<OnboardingModel>(parts_);
            model_->appear();
            model_->goOn();
        });
    }

    OnboardingParts parts_;
    std::unique_ptr<OnboardingModel> model_;
};

TEST_F(OnboardingTest, OnlyAGoodAnswerOfTheFirstLookCounts)
{
    reachPermission(true);
    EXPECT_EQ(model_->permission(), granted);
    reachPermission(false);
    EXPECT_EQ(model_->permission(), unknown);
}

TEST_F(OnboardingTest, AllowingEndsWithTheSystemsAnswerOrAfterAMinute)
{
    reachPermission(false);
    onMain([this] { model_->allowAccess(); });
    time_->advance(59);
    EXPECT_EQ(model_->permission(), asking);
    time_->advance(3);
    EXPECT_EQ(model_->permission(), notGranted);

    reachPermission(false);
    onMain([this] { model_->allowAccess(); });
    time_->advance(5);
    hardware_->setCapturePermitted(true);
    time_->advance(2);
    EXPECT_EQ(model_->permission(), granted);
}

TEST_F(OnboardingTest, NotNowGoesOnWhileTheSystemIsAsking)
{
    reachPermission(false);
    onMain([this] {
        model_->allowAccess();
        model_->goOn();
    });
    EXPECT_EQ(model_->step(), OnboardingModel::Step::done);
    onMain([this] { model_->goOn(); });
    EXPECT_EQ(model_->step(), OnboardingModel::Step::done);
    time_->advance(62); // The answer finds the last step; the window closes before it, too.
    EXPECT_EQ(model_->permission(), notGranted);
}

TEST_F(OnboardingTest, ClosingTakesTheQuestionBack)
{
    reachPermission(false);
    onMain([this] { model_->allowAccess(); });
    time_->advance(2);
    ASSERT_FALSE(taps().empty()); // TearDown closes, and looks.
}

} // namespace
} // namespace fadewell
