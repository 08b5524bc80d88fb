#include "base/Stream.h"

#include "base/Observed.h"
#include "base/VirtualTime.h"

#include <gtest/gtest.h>
#include <vector>

namespace fadewell {
namespace {

class StreamTest : public testing::Test {
protected:
    Subscription consume()
    {
        return stream_.consume(queue_, [this](int value) { received_.push_back(value); });
    }

    std::shared_ptr<VirtualTime> time_ = VirtualTime::create();
    std::shared_ptr<SerialQueue> queue_ = time_->makeQueue();
    Stream<int> stream_{2};
    std::vector<int> received_;
};

TEST_F(StreamTest, KeepsOnlyTheNewestUndelivered)
{
    for (int value = 1; value <= 5; ++value) {
        stream_.send(value);
    }
    const auto subscription = consume();
    time_->run();
    EXPECT_EQ(received_, (std::vector{4, 5}));
}

TEST_F(StreamTest, WakesTheConsumerOncePerBurst)
{
    const auto subscription = consume();
    stream_.send(1);
    stream_.send(2);
    EXPECT_EQ(time_->pendingTasks(), 1U);
    time_->run();
    stream_.send(3);
    time_->run();
    EXPECT_EQ(received_, (std::vector{1, 2, 3}));
}

TEST_F(StreamTest, DeliversNothingAfterFinishOrAfterTheSubscriptionDied)
{
    {
        const auto subscription = consume();
        stream_.send(1);
    }
    time_->run();
    EXPECT_TRUE(received_.empty());

    const auto subscription = consume();
    time_->run();
    EXPECT_EQ(received_, (std::vector{1}))
        << "what nobody took is still there for the next consumer";
    stream_.send(2);
    stream_.finish();
    stream_.send(3);
    time_->run();
    EXPECT_EQ(received_, (std::vector{1}));
}

TEST(ObservedTest, PublishesOnlyChangesAndSurvivesAnObserverThatLeaves)
{
    Observed<int> value(1);
    std::vector<int> seen;
    Subscription second;
    const auto first = value.observe([&](int) { second.cancel(); });
    second = value.observe([&](int now) { seen.push_back(now); });
    EXPECT_FALSE(value.set(1));
    EXPECT_TRUE(value.set(2));
    EXPECT_TRUE(value.set(3));
    EXPECT_TRUE(seen.empty()) << "ended by the first observer before it was told";
}

} // namespace
} // namespace fadewell
