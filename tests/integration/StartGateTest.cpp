// Apps with remembered settings, carried without any path of the engine.

#include "audio/PropertyReaders.h"
#include "audio/render.h"
#include "platform/linux/identity/AppIdentities.h"
#include "platform/linux/pipewire/PipeWireHardware.h"
#include "tests/integration/support/Await.h"
#include "tests/integration/support/SoundTest.h"

namespace fadewell::integration {
namespace {

class StartGateTest : public SoundTest {
protected:
    void SetUp() override
    {
        SoundTest::SetUp();
        std::string error;
        hardware_ = PipeWireHardware::create({}, std::make_shared<AppIdentities>(), error);
        ASSERT_NE(hardware_, nullptr) << error;
    }

    void gate(double gain, std::optional<std::string> output = {})
    {
        hardware_->setGatedApps({{"pw-play", gain, std::move(output)}});
    }
    [[nodiscard]] static bool hasTaps()
    {
        return !Session::nodesContaining("fadewell.tap").empty();
    }

    /// A muting tap on whatever plays, at a gain, and its end.
    void tapAndLetGo(double gain)
    {
        const auto playing = objectIDs(
            *hardware_, kAudioObjectSystemObject, kAudioHardwarePropertyProcessObjectList);
        auto tapped = TapDescription::stereoMixdownOfProcesses(playing);
        tapped.uuid = "tap";
        tapped.name = "Fadewell test";
        tapped.muteBehavior = TapMuteBehavior::mutedWhenTapped;
        AudioObjectID tap = 0;
        ASSERT_EQ(hardware_->createProcessTap(tapped, tap), kAudioHardwareNoError);
        AggregateDescription route;
        route.uid = "app.fadewell.tap.test";
        route.master = speakers;
        route.taps = {{tapped.uuid, true}};
        AudioObjectID device = 0;
        ASSERT_EQ(hardware_->createAggregateDevice(route, device), kAudioHardwareNoError);
        auto* const state = render_state_create(static_cast<float>(gain), 1, sampleRate);
        IOProcID procedure = 0;
        ASSERT_EQ(hardware_->createIOProc(device, render_io_proc, state, procedure), 0);
        EXPECT_EQ(hardware_->start(device, procedure), kAudioHardwareNoError);
        EXPECT_TRUE(speakers_->awaitGain(decibels(gain)));
        EXPECT_EQ(hardware_->destroyIOProc(device, procedure), kAudioHardwareNoError);
        EXPECT_EQ(hardware_->destroyProcessTap(tap), kAudioHardwareNoError);
        render_state_destroy(state);
    }

    std::shared_ptr<PipeWireHardware> hardware_;
};

TEST_F(StartGateTest, TakesOverWhatATapLetsGoOf)
{
    gate(0.25);
    ASSERT_TRUE(await(hasTaps));
    const auto player = play("pw-play", tone());
    ASSERT_TRUE(speakers_->awaitGain(decibels(0.25)));
    const auto start = speakers_->now();
    tapAndLetGo(0.25);
    const auto sound = speakers_->read(start, frames(std::chrono::seconds(1)));
    EXPECT_NEAR(toneGain(sound), decibels(0.25), 0.02) << "heard otherwise between two paths";
    hardware_ = nullptr;
    EXPECT_TRUE(speakers_->awaitGain(0)) << "the end of the program lets go of it";
    EXPECT_FALSE(hasTaps());
}

TEST_F(StartGateTest, LeavesAloneWhatSoundsRightByItself)
{
    gate(1, speakers);
    const auto player = play("pw-play", counter());
    ASSERT_TRUE(
        await([this] { return counted.check(speakers_->readUntilNow(0), 1).heard > 24'000; }));
    EXPECT_TRUE(counted.check(speakers_->readUntilNow(0), 1).isExact());
    gate(1, "an output that is not there");
    const auto start = speakers_->now();
    EXPECT_TRUE(counted.check(speakers_->read(start, 24'000), 1).isExact());
}

} // namespace
} // namespace fadewell::integration
