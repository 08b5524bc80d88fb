#include "base/SystemClock.h"
#include "base/ThreadQueue.h"

#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>

namespace fadewell {
namespace {

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
