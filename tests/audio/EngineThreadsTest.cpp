#include "audio/DeviceMonitor.h"
#include "audio/MicrophoneController.h"
#include "audio/ProcessMonitor.h"
#include "audio/TapManager.h"
#include "base/MemoryUserDefaults.h"
#include "base/SystemClock.h"
#include "base/ThreadQueue.h"
#include "platform/simulated/SimulatedHardware.h"
#include "platform/simulated/SimulatedProcessLookup.h"

#include <gtest/gtest.h>
#include <latch>
#include <utility>
#include <vector>

namespace fadewell {
namespace {

TEST(EngineThreadsTest, ServicesOnRealQueuesLeaveNothingBehind)
{
    const auto clock = std::make_shared<SystemClock>();
    std::vector<std::shared_ptr<SerialQueue>> queues;
    const QueueFactory makeQueue = [clock, &queues](const std::string& label) {
        return queues.emplace_back(std::make_shared<ThreadQueue>(label, clock));
    };
    const auto hardware = SimulatedHardware::create(makeQueue("test.hardware"));
    const EngineContext context{
        hardware, std::make_shared<SimulatedProcessLookup>(), clock, makeQueue};
    const auto speakers = hardware->addDevice({.uid = "speakers"});
    const auto process = hardware->addProcess({.pid = 10, .isRunningOutput = true});

    const auto consumer = makeQueue("test.consumer");
    std::latch published(1);
    auto processes = ProcessMonitor::create(context);
    auto devices = DeviceMonitor::create(context);
    auto microphone = MicrophoneController::create(context, std::make_shared<MemoryUserDefaults>());
    auto taps = TapManager::create(context);
    auto lists = processes->processes().consume(
        consumer, [&published, isFirst = true](const auto& /*list*/) mutable {
            published.count_down(std::exchange(isFirst, false) ? 1 : 0);
        });
    processes->start();
    devices->start();
    microphone->start();
    taps->update({{"app", {process}, 0.5, 1.0, true, {speakers}, std::nullopt}});
    published.wait();
    hardware->setRunning(process, false, true);
    taps->stopAll();
    EXPECT_EQ(hardware->made().taps, 0U);
    taps->update({{"app", {process}, 0.5, 1.0, true, {speakers}, std::nullopt}});
    microphone->releaseMute();

    taps = nullptr;
    processes = nullptr;
    devices = nullptr;
    microphone = nullptr;
    for (const auto& queue : queues) {
        queue->sync([] {}); // A task that still held its service has ended.
    }
    EXPECT_EQ(hardware->made().taps, 0U);
    EXPECT_EQ(hardware->made().listeners, 0U);
}

} // namespace
} // namespace fadewell
