#include "audio/render.h"
#include "base/VirtualTime.h"
#include "platform/simulated/SimulatedHardware.h"

#include <gtest/gtest.h>
#include <tuple>

namespace fadewell {
namespace {

TEST(SimulatedSoundTest, APathPlaysWhatItTapsForAsLongAsItRuns)
{
    const auto time = VirtualTime::create();
    const auto hardware = SimulatedHardware::create(time->makeQueue());
    const auto speakers = hardware->addDevice({.uid = "speakers"});
    const auto mono = hardware->addDevice({.uid = "mono", .outputChannels = 1});
    const auto process =
        hardware->addProcess({.pid = 7, .isRunningOutput = true, .left = 0.5F, .right = -0.25F});
    auto* const state = render_state_create(0.5F, 1, 48000);
    const TapDescription muting{
        .uuid = "t", .processes = {process}, .muteBehavior = TapMuteBehavior::mutedWhenTapped};
    auto everyone = TapDescription::stereoGlobalTapButExcludeProcesses({});
    everyone.uuid = "t";
    auto nobody = everyone;
    nobody.processes = {process};
    AudioObjectID tap = 0;
    AudioObjectID path = 0;
    IOProcID procedure = 0;
    hardware->createProcessTap(muting, tap);
    hardware->createAggregateDevice({.uid = "path", .master = "mono", .taps = {{"t", {}}}}, path);
    ASSERT_EQ(hardware->createIOProc(path, render_io_proc, state, procedure), 0);

    const std::tuple<const char*, std::function<void()>, float, float> steps[] = {
        {"not started", [] {}, 0.5F, 0.0F},
        {"started", [&] { hardware->start(path, procedure); }, 0.0F, 0.0625F},
        {"interleaved", [&] { hardware->setInterleaved(true); }, 0.0F, 0.0625F},
        {"stalled", [&] { hardware->setStalled(path, true); }, 0.0F, 0.0F},
        {"goes on", [&] { hardware->setStalled(path, false); }, 0.0F, 0.0625F},
        {"adds", [&] { hardware->setTapDescription(tap, everyone); }, 0.5F, 0.0625F},
        {"leaves out", [&] { hardware->setTapDescription(tap, nobody); }, 0.5F, 0.0F},
        {"mutes", [&] { hardware->setTapDescription(tap, muting); }, 0.0F, 0.0625F},
        {"stopped", [&] { hardware->stop(path, procedure); }, 0.5F, 0.0F},
    };
    for (const auto& [what, change, direct, tapped] : steps) {
        change();
        auto heard = hardware->renderCycle(64);
        EXPECT_EQ(heard.at(speakers).left.back(), direct) << what;
        EXPECT_EQ(heard.at(mono).left.back(), tapped) << what;
    }
    hardware->setCapturePermitted(false);
    EXPECT_EQ(hardware->setTapDescription(tap, muting), kAudioDevicePermissionsError);
    hardware->removeDevice(mono);
    time->run();
    EXPECT_EQ(hardware->start(path, procedure), kAudioHardwareBadDeviceError);
    hardware->destroyIOProc(path, procedure);
    render_state_destroy(state);
}

} // namespace
} // namespace fadewell
