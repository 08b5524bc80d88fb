#include "base/SystemClock.h"
#include "base/ThreadQueue.h"
#include "base/VirtualTime.h"

#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>

namespace fadewell {
namespace {

TEST(VirtualTimeTest, RunsTasksByDueTimeThenByOrderOfPosting)
{
    const auto time = VirtualTime::create();
    const auto first = time->makeQueue();
    const auto second = time->makeQueue();
    std::string order;
    auto late = first->after(0.2, [&] { order += "d"; });
    auto early = second->after(0.1, [&] { order += "c"; });
    second->async([&] { order += "a"; });
    first->async([&] { order += "b"; });

    time->advance(0.15);
    EXPECT_EQ(order, "abc");
    time->advance(0.1);
    EXPECT_EQ(order, "abcd");
}

TEST(VirtualTimeTest, SleepingTaskLetsOtherQueuesRun)
{
    const auto time = VirtualTime::create(0);
    const auto sleeper = time->makeQueue();
    const auto other = time->makeQueue();
    double seen = -1;
    bool ranOnSleeper = false;
    sleeper->async([&] {
        sleeper->async([&] { ranOnSleeper = true; });
        sleeper->clock().sleep(1.0);
        EXPECT_DOUBLE_EQ(seen, 0.5);
        EXPECT_FALSE(ranOnSleeper);
    });
    auto timer = other->after(0.5, [&] { seen = time->uptime(); });
    time->run();
    EXPECT_DOUBLE_EQ(time->uptime(), 1.0);
    EXPECT_TRUE(ranOnSleeper);
}

TEST(VirtualTimeTest, RepeatsUntilCancelledAndForgetsDeadTimers)
{
    const auto time = VirtualTime::create();
    const auto queue = time->makeQueue();
    int runs = 0;
    Timer timer;
    timer = queue->every(2.0, 1.0, 0.25, [&] {
        if (++runs == 3) {
            timer.cancel();
        }
    });
    time->advance(10.0);
    EXPECT_EQ(runs, 3);
    {
        const Timer dropped = queue->after(1.0, [&] { ++runs; });
    }
    queue->after(1.0, [&] { ++runs; }).detach();
    EXPECT_EQ(time->pendingTasks(), 1U);
    time->advance(2.0);
    EXPECT_EQ(runs, 4);
}

TEST(ThreadQueueTest, KeepsOrderAndRunsSyncAfterWhatWasPosted)
{
    ThreadQueue queue("test.queue", std::make_shared<SystemClock>());
    std::string order;
    queue.async([&] { order += "a"; });
    queue.async([&] { order += "b"; });
    queue.sync([&] {
        queue.assertCurrent();
        order += "c";
    });
    EXPECT_EQ(order, "abc");
    EXPECT_FALSE(queue.isCurrent());
}

TEST(ThreadQueueTest, SurvivesLosingItsLastOwnerInsideItsOwnTask)
{
    auto queue = std::make_shared<ThreadQueue>("test.queue", std::make_shared<SystemClock>());
    std::atomic<bool> ran = false;
    auto* raw = queue.get();
    raw->async([&ran, owner = std::move(queue)]() mutable {
        owner.reset();
        ran = true;
        ran.notify_one();
    });
    ran.wait(false);
    EXPECT_TRUE(ran);
}

TEST(ThreadQueueTest, CancelledWorkNeverRuns)
{
    ThreadQueue queue("test.queue", std::make_shared<SystemClock>());
    bool ran = false;
    queue.sync([&] {
        auto timer = queue.after(0, [&] { ran = true; });
        timer.cancel();
    });
    queue.sync([] {});
    EXPECT_FALSE(ran);
}

} // namespace
} // namespace fadewell
