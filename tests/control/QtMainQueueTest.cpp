#include "control/QtMainQueue.h"

#include "base/SystemClock.h"

#include <QCoreApplication>

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace fadewell {
namespace {

/// A clock moved by hand; the event loop's own timers still run on real time.
class ManualClock final : public Clock {
public:
    [[nodiscard]] double uptime() const override { return now; }
    void sleep(double seconds) override { now += seconds; }
    double now = 100;
};

class QtMainQueueTest : public testing::Test {
protected:
    static void runEvents() { QCoreApplication::processEvents(); }

    /// Makes the queue look at the clock again without waiting for real time.
    void advance(double seconds)
    {
        clock->now += seconds;
        queue->async([] {});
        runEvents();
        runEvents();
    }

    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    std::shared_ptr<QtMainQueue> queue = std::make_shared<QtMainQueue>(clock);
    std::string order;
};

TEST_F(QtMainQueueTest, RunsTasksOfAnyThreadInOrderAndWhatTheyPostAfterwards)
{
    queue->async([&] {
        queue->assertCurrent();
        order += "a";
        queue->async([&] { order += "c"; });
        EXPECT_EQ(order, "a") << "a task never runs inside another";
    });
    std::thread([&] {
        EXPECT_FALSE(queue->isCurrent());
        queue->async([&] { order += "b"; });
    }).join();
    EXPECT_EQ(order, "");
    runEvents();
    runEvents();
    EXPECT_EQ(order, "abc");
}

TEST_F(QtMainQueueTest, DelaysByTheClockAndKeepsOrderOfEqualTimes)
{
    const auto late = queue->after(2, [&] { order += "d"; });
    const auto first = queue->after(1, [&] { order += "b"; });
    const auto second = queue->after(1, [&] { order += "c"; });
    const auto now = queue->after(-5, [&] { order += "a"; });
    advance(0.5);
    EXPECT_EQ(order, "a");
    advance(0.5);
    EXPECT_EQ(order, "abc");
    advance(1);
    EXPECT_EQ(order, "abcd");
}

TEST_F(QtMainQueueTest, CancelledWorkNeverRuns)
{
    auto dropped = std::optional(queue->after(1, [&] { order += "x"; }));
    auto inSameBatch = queue->after(1, [&] { order += "y"; });
    queue->async([&] { inSameBatch.cancel(); });
    clock->now += 1;
    dropped.reset();
    runEvents();
    advance(1);
    EXPECT_EQ(order, "");
    queue->after(1, [&] { order += "z"; }).detach();
    advance(1);
    EXPECT_EQ(order, "z");
}

TEST_F(QtMainQueueTest, RepeatsUntilCancelledWithoutCatchingUp)
{
    Timer timer;
    timer = queue->every(1, 2, 0, [&] {
        order += "t";
        if (order.size() == 3) {
            timer.cancel();
        }
    });
    advance(1);
    EXPECT_EQ(order, "t");
    advance(7); // Three runs are due; the missed ones are skipped.
    EXPECT_EQ(order, "tt");
    advance(2);
    advance(2);
    EXPECT_EQ(order, "ttt");
}

TEST_F(QtMainQueueTest, DropsWhatIsPendingWithItsLastOwner)
{
    const auto held = std::make_shared<int>(0);
    queue->async([&] { order += "a"; });
    queue->async([this, held] { queue.reset(); });
    queue->async([this, held] { order += "x"; });
    runEvents();
    runEvents();
    EXPECT_EQ(order, "a");
    EXPECT_EQ(held.use_count(), 1) << "tasks are released, run or not";
}

TEST_F(QtMainQueueTest, RealTimersWakeTheLoop)
{
    auto real = std::make_shared<QtMainQueue>(std::make_shared<SystemClock>());
    bool ran = false;
    const auto timer = real->after(0.01, [&] { ran = true; });
    while (!ran) { // The test's own limit ends it.
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    EXPECT_TRUE(ran);
}

TEST(QtMainQueueDeathTest, RefusesToBeWaitedFor)
{
    QtMainQueue queue(std::make_shared<SystemClock>());
    EXPECT_DEATH(queue.sync([] {}), "waited for the main queue");
}

} // namespace
} // namespace fadewell
