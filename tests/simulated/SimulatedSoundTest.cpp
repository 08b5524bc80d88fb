#include "audio/render.h"
#include "base/VirtualTime.h"
#include "platform/simulated/SimulatedHardware.h"

#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

namespace fadewell {
namespace {

/// Two outputs, one process that plays to the default, and a path for it that plays at half gain.
class SimulatedSoundTest : public testing::Test {
protected:
    ~SimulatedSoundTest() override
    {
        hardware_->destroyIOProc(aggregate_, procedure_);
        render_state_destroy(state_);
    }

    void buildPath(const TapDescription& description, const std::string& outputUID)
    {
        hardware_->createProcessTap(description, tap_);
        hardware_->createAggregateDevice(
            {.uid = "app.fadewell.tap." + outputUID, .master = outputUID, .taps = {{"t", {}}}},
            aggregate_);
        ASSERT_EQ(hardware_->createIOProc(aggregate_, render_io_proc, state_, procedure_), 0);
    }

    [[nodiscard]] TapDescription mutingTap() const
    {
        return {
            .uuid = "t", .processes = {process_}, .muteBehavior = TapMuteBehavior::mutedWhenTapped};
    }

    /// The left and the right sample that a device plays, the same in the whole cycle.
    [[nodiscard]] std::pair<float, float> heardAt(AudioObjectID device)
    {
        const auto heard = hardware_->renderCycle(64).at(device);
        EXPECT_EQ(heard.left.front(), heard.left.back());
        EXPECT_EQ(heard.right.front(), heard.right.back());
        return {heard.left.front(), heard.right.front()};
    }

    using Sample = std::pair<float, float>;

    std::shared_ptr<VirtualTime> time_ = VirtualTime::create();
    std::shared_ptr<SimulatedHardware> hardware_ = SimulatedHardware::create(time_->makeQueue());
    AudioObjectID speakers_ = hardware_->addDevice({.uid = "speakers"});
    AudioObjectID mono_ = hardware_->addDevice({.uid = "mono", .outputChannels = 1});
    AudioObjectID process_ =
        hardware_->addProcess({.pid = 7, .isRunningOutput = true, .left = 0.5F, .right = -0.25F});
    RenderState* state_ = render_state_create(0.5F, 1, 48000);
    AudioObjectID tap_ = 0;
    AudioObjectID aggregate_ = 0;
    IOProcID procedure_ = 0;
};

TEST_F(SimulatedSoundTest, TapMutesOnlyWhileItIsRead)
{
    buildPath(mutingTap(), "speakers");
    EXPECT_EQ(heardAt(speakers_), Sample(0.5F, -0.25F));
    hardware_->start(aggregate_, procedure_);
    EXPECT_EQ(heardAt(speakers_), Sample(0.25F, -0.125F));
    hardware_->setInterleaved(true);
    EXPECT_EQ(heardAt(speakers_), Sample(0.25F, -0.125F));
    hardware_->stop(aggregate_, procedure_);
    EXPECT_EQ(heardAt(speakers_), Sample(0.5F, -0.25F));
    EXPECT_EQ(render_state_callback_count(state_), 2U);
}

TEST_F(SimulatedSoundTest, PathLeadsToItsOwnOutput)
{
    buildPath(mutingTap(), "mono");
    hardware_->start(aggregate_, procedure_);
    EXPECT_EQ(heardAt(speakers_), Sample(0, 0));
    EXPECT_EQ(heardAt(mono_), Sample(0.0625F, 0.0625F));
    hardware_->setStalled(aggregate_, true);
    EXPECT_EQ(heardAt(mono_), Sample(0, 0));
    hardware_->setStalled(aggregate_, false);
    hardware_->removeDevice(mono_);
    time_->run();
    EXPECT_EQ(hardware_->start(aggregate_, procedure_), kAudioHardwareBadDeviceError);
    EXPECT_FALSE(hardware_->renderCycle(64).contains(mono_));
}

TEST_F(SimulatedSoundTest, TapWithoutMutingAddsAndWithoutPermissionIsSilent)
{
    auto everyone = TapDescription::stereoGlobalTapButExcludeProcesses({});
    everyone.uuid = "t";
    buildPath(everyone, "speakers");
    hardware_->start(aggregate_, procedure_);
    EXPECT_EQ(heardAt(speakers_), Sample(0.75F, -0.375F));
    everyone.processes = {process_};
    EXPECT_EQ(hardware_->setTapDescription(tap_, everyone), 0);
    EXPECT_EQ(heardAt(speakers_), Sample(0.5F, -0.25F)) << "left out of the tap";
    hardware_->setCapturePermitted(false);
    EXPECT_EQ(hardware_->setTapDescription(tap_, mutingTap()), kAudioDevicePermissionsError);
    EXPECT_EQ(heardAt(speakers_), Sample(0.5F, -0.25F));
}

TEST_F(SimulatedSoundTest, CyclesRunByThemselvesUntilTheirTimerDies)
{
    buildPath(mutingTap(), "speakers");
    hardware_->start(aggregate_, procedure_);
    {
        const auto cycles = hardware_->runCycles(480, 0.01);
        time_->advance(0.1);
    }
    const auto calls = render_state_callback_count(state_);
    EXPECT_GE(calls, 9U);
    time_->advance(1);
    EXPECT_EQ(render_state_callback_count(state_), calls);
}

/// Where the procedure under test is.
struct SlowCall {
    std::atomic<bool> isInside = false;
    std::atomic<bool> mayLeave = false;

    static OSStatus call(AudioObjectID,
                         const AudioTimeStamp*,
                         const AudioBufferList*,
                         const AudioTimeStamp*,
                         AudioBufferList*,
                         const AudioTimeStamp*,
                         void* client) noexcept
    {
        auto& slow = *static_cast<SlowCall*>(client);
        slow.isInside = true;
        while (!slow.mayLeave) {
            std::this_thread::yield();
        }
        slow.isInside = false;
        return 0;
    }
};

TEST_F(SimulatedSoundTest, DestroyingAProcedureWaitsForTheCallUnderWay)
{
    SlowCall slow;
    IOProcID id = 0;
    ASSERT_EQ(hardware_->createIOProc(speakers_, SlowCall::call, &slow, id), 0);
    ASSERT_EQ(hardware_->start(speakers_, id), 0);
    std::thread audio([&] { hardware_->renderCycle(64); });
    while (!slow.isInside) {
        std::this_thread::yield();
    }
    bool wasInside = true;
    std::thread control([&] {
        EXPECT_EQ(hardware_->destroyIOProc(speakers_, id), 0);
        wasInside = slow.isInside;
    });
    // The destruction has begun once the procedure is no longer counted.
    while (hardware_->made().procedures > 0) {
        std::this_thread::yield();
    }
    slow.mayLeave = true;
    control.join();
    audio.join();
    EXPECT_FALSE(wasInside);
}

} // namespace
} // namespace fadewell
