#include "platform/simulated/SimulatedHardware.h"

#include "audio/PropertyReaders.h"
#include "base/VirtualTime.h"
#include "platform/simulated/SimulatedProcessLookup.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace fadewell {
namespace {

using testing::ElementsAre;

class SimulatedHardwareTest : public testing::Test {
protected:
    /// Counts what a listener hears.
    int& listen(AudioObjectID object, const AudioObjectPropertyAddress& address)
    {
        auto& notices = *counters_.emplace_back(std::make_unique<int>(0));
        ListenerToken token = 0;
        EXPECT_EQ(hardware_->addListener(
                      object, address, queue_, [&notices] { ++notices; }, token),
                  0);
        return notices;
    }

    std::shared_ptr<VirtualTime> time_ = VirtualTime::create();
    std::shared_ptr<SerialQueue> queue_ = time_->makeQueue();
    std::shared_ptr<SimulatedHardware> hardware_ = SimulatedHardware::create(time_->makeQueue());
    std::vector<std::unique_ptr<int>> counters_;
};

TEST_F(SimulatedHardwareTest, FaultsStrikeAsOftenAsPlannedAndOnlyWhereTheyShould)
{
    const auto process = hardware_->addProcess({.pid = 7});
    auto& faults = hardware_->faults();
    faults.failNext(
        HardwareCall::getData, kAudioHardwareUnspecifiedError, 2, kAudioProcessPropertyPID);
    const auto readPID = [&] {
        return readProperty<std::int32_t>(
            *hardware_, process, propertyAddress(kAudioProcessPropertyPID));
    };
    EXPECT_EQ(uint32Property(*hardware_, process, kAudioProcessPropertyIsRunning), 0U);
    EXPECT_EQ(readPID(), std::nullopt);
    EXPECT_EQ(readPID(), std::nullopt);
    EXPECT_EQ(readPID(), 7);
    EXPECT_EQ(hardware_->calls().count(HardwareCall::getData, kAudioProcessPropertyPID), 3);

    faults.delay(HardwareCall::createProcessTap, 0.5);
    AudioObjectID tap = 0;
    EXPECT_EQ(hardware_->createProcessTap({}, tap), 0);
    EXPECT_DOUBLE_EQ(time_->uptime(), 1000.5);

    faults.vanish(HardwareCall::setTapDescription);
    EXPECT_EQ(hardware_->setTapDescription(tap, {}), kAudioHardwareBadObjectError);
    EXPECT_EQ(hardware_->made(), SimulatedHardware::Made{});

    faults.giveNothing(HardwareCall::createProcessTap);
    EXPECT_EQ(hardware_->createProcessTap({}, tap), 0);
    EXPECT_EQ(tap, 0U);
    EXPECT_THAT(hardware_->calls().changes(),
                ElementsAre("createProcessTap", "setTapDescription", "createProcessTap"));
}

TEST_F(SimulatedHardwareTest, ChangesReachTheListenersThatCoverThem)
{
    const auto speakers = hardware_->addDevice({.uid = "a"});
    const auto headset = hardware_->addDevice({.uid = "b"});
    const auto process = hardware_->addProcess({.pid = 7});
    const auto& running = listen(process, propertyAddress(kAudioProcessPropertyIsRunning));
    const auto& devices = listen(
        process, propertyAddress(kAudioProcessPropertyDevices, kAudioObjectPropertyScopeWildcard));
    const auto& list =
        listen(kAudioObjectSystemObject, propertyAddress(kAudioHardwarePropertyProcessObjectList));

    hardware_->setRunning(process, true, false);
    hardware_->setRunning(process, true, false);
    hardware_->setDefaultOutput(headset);
    time_->run();
    EXPECT_EQ(running, 1) << "what stays the same is no change";
    hardware_->setRunning(process, false, true);
    time_->run();
    EXPECT_EQ(running, 2) << "it runs on, but in the other direction";
    EXPECT_EQ(devices, 1) << "a process follows the default output";
    hardware_->setOutputDevices(process, {{speakers}});
    hardware_->setDefaultOutput(0);
    hardware_->removeProcess(process);
    time_->run();
    EXPECT_EQ(devices, 2);
    EXPECT_EQ(list, 1);
    EXPECT_EQ(defaultOutputDevice(*hardware_), std::nullopt);
}

TEST_F(SimulatedHardwareTest, DeviceThatGoesHandsTheDefaultOn)
{
    const auto speakers = hardware_->addDevice({.uid = "a"});
    hardware_->addDevice({.uid = "microphone", .outputStreams = 0, .inputStreams = 1});
    const auto headset = hardware_->addDevice({.uid = "b"});
    hardware_->removeDevice(speakers);
    EXPECT_EQ(defaultOutputDevice(*hardware_), headset);
    EXPECT_EQ(uint32Property(*hardware_, speakers, kAudioDevicePropertyDeviceIsAlive), 0U);
    time_->run();
    EXPECT_EQ(uint32Property(*hardware_, speakers, kAudioDevicePropertyDeviceIsAlive),
              std::nullopt);
}

TEST_F(SimulatedHardwareTest, InputControlsCanBeWrittenWhereTheyAreSettable)
{
    const auto device =
        hardware_->addDevice({.uid = "m",
                              .outputStreams = 0,
                              .inputStreams = 1,
                              .inputVolume = {{1, {0.8F, true}}, {2, {0.8F, false}}},
                              .inputMute = {{0, {}}}});
    const auto volume = [](AudioObjectPropertyElement element) {
        return propertyAddress(
            kAudioDevicePropertyVolumeScalar, kAudioObjectPropertyScopeInput, element);
    };
    const auto& notices = listen(device, volume(1));
    EXPECT_FALSE(hardware_->has(device, volume(0)));
    EXPECT_EQ(writeProperty(*hardware_, device, volume(1), 0.5F), 0);
    EXPECT_EQ(writeProperty(*hardware_, device, volume(2), 0.5F),
              kAudioHardwareIllegalOperationError);
    EXPECT_EQ(writeProperty(*hardware_, device, volume(1), 0.5),
              kAudioHardwareBadPropertySizeError);
    EXPECT_EQ(readProperty<float>(*hardware_, device, volume(1)), 0.5F);
    EXPECT_EQ(readProperty<float>(*hardware_, device, volume(2)), 0.8F);
    time_->run();
    EXPECT_EQ(notices, 1);
}

TEST_F(SimulatedHardwareTest, TapsAndAggregatesBecomeReadyWhenScripted)
{
    hardware_->addDevice({.uid = "a"});
    hardware_->setNextTapFormat({.readsUntilReady = 2, .secondsUntilReady = 0.0625});
    hardware_->setNextReadiness({.inputAfter = 0.125, .outputAfter = 0.25});
    const auto tap = hardware_->plantTap({.uuid = "t", .name = "Fadewell x"});
    const auto aggregate = hardware_->plantAggregate(
        {.uid = "app.fadewell.tap.x", .master = "a", .taps = {{"t", {}}}});
    const auto rate = [&] {
        return readProperty<AudioStreamBasicDescription>(
                   *hardware_, tap, propertyAddress(kAudioTapPropertyFormat))
            ->mSampleRate;
    };
    const auto streams = [&](AudioObjectPropertyScope scope) {
        return objectIDs(*hardware_, aggregate, kAudioDevicePropertyStreams, scope).size();
    };
    EXPECT_EQ(rate(), 0);
    time_->advance(0.0625);
    EXPECT_EQ(rate(), 0) << "the second read still comes too early";
    EXPECT_EQ(rate(), 48000);
    EXPECT_EQ(streams(kAudioObjectPropertyScopeInput), 0U);
    time_->advance(0.0625);
    EXPECT_EQ(streams(kAudioObjectPropertyScopeInput), 1U);
    EXPECT_EQ(streams(kAudioObjectPropertyScopeOutput), 0U);
    time_->advance(0.125);
    EXPECT_EQ(streams(kAudioObjectPropertyScopeOutput), 1U);
}

TEST(SimulatedProcessLookup, TellsWhatItWasToldAndCountsQuestions)
{
    SimulatedProcessLookup lookup;
    lookup.setParent(7, 1);
    lookup.setResponsible(7, 9);
    EXPECT_EQ(lookup.parent(7), 1);
    EXPECT_EQ(lookup.parent(8), std::nullopt);
    EXPECT_EQ(lookup.responsible(7), 9);
    EXPECT_EQ(lookup.responsible(8), 0);
    EXPECT_EQ(lookup.questions(), 4);
    EXPECT_TRUE(lookup.knowsResponsibleProcesses());
    lookup.setKnowsResponsibleProcesses(false);
    EXPECT_FALSE(lookup.knowsResponsibleProcesses());
}

} // namespace
} // namespace fadewell
