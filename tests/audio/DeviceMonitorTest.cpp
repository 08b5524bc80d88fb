#include "audio/DeviceMonitor.h"

#include "tests/audio/EngineTest.h"

#include <tuple>

namespace fadewell {
namespace {

using enum HardwareCall;

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

using Kind = OutputDevice::Kind;

class DeviceMonitorTest : public EngineTest {
protected:
    void start()
    {
        monitor_->start();
        time_->advance(0.11);
    }

    [[nodiscard]] Lines names() const
    {
        Lines names;
        for (const auto& output : DeviceMonitor::makeSnapshot(*hardware_).outputs) {
            names.push_back(output.name);
        }
        return names;
    }

    std::shared_ptr<DeviceMonitor> monitor_ = DeviceMonitor::create(context_);
    std::shared_ptr<std::vector<DeviceSnapshot>> snapshots_ = collect(monitor_->snapshots());
};

TEST_F(DeviceMonitorTest, OnlyWhatAUserCouldChooseIsAnOutput)
{
    const std::tuple<SimulatedDevice, bool> cases[] = {
        {{.uid = "plain", .name = "x"}, true},
        {{.uid = "microphone", .name = "x", .outputStreams = 0, .inputStreams = 1}, false},
        {{.uid = "hidden", .name = "x", .isHidden = true}, false},
        {{.uid = "unknown visibility", .name = "x", .isHidden = std::nullopt}, true},
        {{.uid = std::nullopt, .name = "x"}, false},
        {{.uid = "", .name = "x"}, false},
        {{.uid = "app.fadewell.tap.1", .name = "x"}, false},
        {{.uid = "my app.fadewell.tap.1", .name = "x"}, true},
    };
    for (const auto& [device, isOutput] : cases) {
        const auto id = hardware_->addDevice(device);
        EXPECT_EQ(DeviceMonitor::makeSnapshot(*hardware_).outputs.size(), isOutput ? 1U : 0U)
            << device.uid.value_or("no UID");
        hardware_->removeDevice(id);
        time_->run();
    }
    const auto odd = addOutput("odd");
    hardware_->setProperty(odd, propertyAddress(kAudioDevicePropertyIsHidden), bytesOf(2U));
    EXPECT_EQ(names().size(), 1U) << "only 1 means hidden";
}

TEST_F(DeviceMonitorTest, FillsDevicesAndSortsThemAsAFileBrowserDoes)
{
    const auto tenth = addOutput("b", "Speaker 10");
    const auto second = addOutput("a", "speaker 2");
    const auto nameless =
        hardware_->addDevice({.uid = "headset-uid", .name = "", .transport = std::nullopt});
    const auto twin = addOutput("c", "SPEAKER 2");
    hardware_->setDefaultOutput(tenth);
    start();
    EXPECT_THAT(*snapshots_,
                ElementsAre(DeviceSnapshot{{{"headset-uid", nameless, "headset-uid", Kind::other},
                                            {"a", second, "speaker 2", Kind::builtInSpeakers},
                                            {"c", twin, "SPEAKER 2", Kind::builtInSpeakers},
                                            {"b", tenth, "Speaker 10", Kind::builtInSpeakers}},
                                           "b"}));
}

TEST_F(DeviceMonitorTest, PluggedHeadphonesGiveOneSnapshot)
{
    const auto device =
        hardware_->addDevice({.uid = "a", .name = "A", .dataSource = fourCharCode("ispk")});
    hardware_->setDefaultOutput(hardware_->addDevice({.uid = "app.fadewell.tap.x"}));
    start();
    EXPECT_EQ(snapshots_->back().defaultOutputUID, "app.fadewell.tap.x") << "though no choice";
    hardware_->setDataSource(device, kAudioDataSourceHeadphones);
    time_->advance(0.099);
    EXPECT_EQ(snapshots_->size(), 1U);
    time_->advance(0.002);
    ASSERT_EQ(snapshots_->size(), 2U);
    EXPECT_EQ(snapshots_->at(0).outputs[0].kind, Kind::builtInSpeakers);
    EXPECT_EQ(snapshots_->at(1).outputs[0].kind, Kind::headphones);
}

TEST_F(DeviceMonitorTest, PublishesNothingWhenNothingChangedInTheEnd)
{
    const auto device = addOutput("a", "Old");
    start();
    hardware_->setName(device, "New");
    hardware_->setName(device, "Old");
    hardware_->addDevice({.uid = "in", .outputStreams = 0, .inputStreams = 1});
    time_->advance(0.2);
    EXPECT_EQ(snapshots_->size(), 1U);
    hardware_->setName(device, "New");
    hardware_->setName(device, "Newest");
    time_->advance(0.2);
    EXPECT_EQ(snapshots_->size(), 2U) << "one for the burst";
    EXPECT_EQ(snapshots_->back().outputs[0].name, "Newest");
}

TEST_F(DeviceMonitorTest, FollowsDevicesAndDefaultUntilItIsStopped)
{
    start();
    EXPECT_THAT(*snapshots_, ElementsAre(DeviceSnapshot{})) << "the first one even when empty";
    const auto first = addOutput("a", "A");
    const auto second =
        hardware_->addDevice({.uid = "b", .name = "B", .dataSource = fourCharCode("ispk")});
    hardware_->setDefaultOutput(second);
    time_->advance(0.11);
    EXPECT_EQ(snapshots_->back().outputs.size(), 2U);
    EXPECT_EQ(snapshots_->back().defaultOutputUID, "b");
    EXPECT_EQ(hardware_->made().listeners, 5U);
    hardware_->removeDevice(second);
    time_->advance(0.11);
    EXPECT_EQ(snapshots_->back().outputs.size(), 1U);
    EXPECT_EQ(hardware_->made().listeners, 3U);

    fail(getData, 2, kAudioHardwarePropertyDevices);
    hardware_->setDefaultOutput(kAudioObjectUnknown);
    time_->advance(0.11);
    EXPECT_EQ(snapshots_->back(), DeviceSnapshot{}) << "an unreadable list is empty";

    monitor_->stop();
    EXPECT_EQ(hardware_->made().listeners, 0U);
    hardware_->setName(first, "New");
    time_->advance(1);
    EXPECT_EQ(time_->pendingTasks(), 0U);
}

} // namespace
} // namespace fadewell
