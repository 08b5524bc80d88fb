#include "control/ChangeNotifier.h"

#include "base/MemoryUserDefaults.h"
#include "base/VirtualTime.h"
#include "tests/support/SimulatedWorkspace.h"

#include <gtest/gtest.h>
#include <memory>
#include <utility>

namespace fadewell {
namespace {

TEST(ChangeNotifierTest, TellsOnceATurnAndOnlyOfRealChanges)
{
    const auto time = VirtualTime::create();
    const auto queue = time->makeQueue();
    MixerModel::Services services;
    services.mainQueue = queue;
    services.workspace = std::make_shared<SimulatedWorkspace>();
    services.defaults = std::make_shared<MemoryUserDefaults>();
    const auto model = MixerModel::create(std::move(services));
    int told = 0;
    auto notifier = std::make_unique<ChangeNotifier>(model, queue, [&] { ++told; });
    const auto toldAfter = [&](const std::function<void()>& change) {
        told = 0;
        queue->async(change);
        time->run();
        return told;
    };

    EXPECT_EQ(toldAfter([&] {
                  model->isCallDetected.set(true);
                  model->defaultOutputUID.set("uid");
                  model->microphoneUserNames.set({"Zoom"});
              }),
              1);
    EXPECT_EQ(toldAfter([&] { model->isCallDetected.set(true); }), 0) << "nothing changed";
    EXPECT_EQ(toldAfter([&] {
                  model->needsAudioPermission.set(true);
                  model->needsAudioPermission.set(false);
              }),
              0)
        << "taken back in the same turn";
    EXPECT_EQ(toldAfter([&] { model->needsAudioPermission.set(true); }), 1);
    EXPECT_EQ(toldAfter([&] {
                  model->isCallDetected.set(false);
                  notifier.reset();
              }),
              0)
        << "its end drops what is pending";
}

} // namespace
} // namespace fadewell
