#include "core/OutputDevice.h"

#include <gtest/gtest.h>

namespace fadewell {
namespace {

using Kind = OutputDevice::Kind;
using Transport = OutputDevice::Transport;

TEST(OutputDeviceTest, ClassifiesByTransportThenByName)
{
    const struct {
        std::uint32_t transport;
        const char* name;
        bool isHeadphones;
        Kind kind;
    } cases[] = {
        {Transport::builtIn, "MacBook Pro Speakers", true, Kind::headphones},
        {Transport::builtIn, "MacBook Pro Speakers", false, Kind::macBookSpeakers},
        {Transport::builtIn, "iMac Speakers", false, Kind::iMacSpeakers},
        {Transport::builtIn, "Mac mini Speakers", false, Kind::macMiniSpeakers},
        {Transport::builtIn, "Mac Studio Speakers", false, Kind::macStudioSpeakers},
        {Transport::builtIn, "macbook", false, Kind::builtInSpeakers},
        {Transport::bluetooth, "My AirPods Max", false, Kind::airPodsMax},
        {Transport::bluetoothLE, "AirPods Pro von Eva", false, Kind::airPodsPro},
        {Transport::bluetooth, "AirPods", true, Kind::airPods},
        {Transport::bluetooth, "Beats Studio", false, Kind::beats},
        {Transport::bluetoothLE, "Powerbeats Pro", false, Kind::beats},
        {Transport::bluetooth, "beats solo", false, Kind::bluetooth},
        {Transport::hdmi, "Studio Display", false, Kind::displaySpeakers},
        {Transport::displayPort, "Studio Display", false, Kind::displaySpeakers},
        {Transport::thunderbolt, "Studio Display", false, Kind::displaySpeakers},
        {Transport::hdmi, "LG display", false, Kind::tv},
        {Transport::airPlay, "Kitchen HomePod", false, Kind::homePod},
        {Transport::airPlay, "Living Room TV", false, Kind::airPlay},
        {Transport::usb, "Display Audio", false, Kind::displaySpeakers},
        {Transport::usb, "MacBook AirPods", true, Kind::usb},
        {Transport::virtual_, "AirPods", false, Kind::virtual_},
        {Transport::aggregate, "Display", true, Kind::virtual_},
        {0, "MacBook AirPods Display", true, Kind::other},
    };
    for (const auto& [transport, name, isHeadphones, kind] : cases) {
        EXPECT_EQ(OutputDevice::classify(transport, name, isHeadphones), kind)
            << transport << ' ' << name;
    }
}

TEST(OutputDeviceTest, KindsKeepTheirOrderAndNames)
{
    const auto kinds = OutputDevice::allKinds();
    ASSERT_EQ(kinds.size(), 18U);
    for (std::size_t index = 0; index < kinds.size(); ++index) {
        EXPECT_EQ(static_cast<std::size_t>(kinds[index]), index);
        EXPECT_EQ(OutputDevice::kindFromRawValue(OutputDevice::rawValue(kinds[index])),
                  kinds[index]);
    }
    EXPECT_EQ(OutputDevice::kindFromRawValue("virtual"), Kind::virtual_);
    EXPECT_FALSE(OutputDevice::kindFromRawValue("virtual_"));
    EXPECT_EQ(Transport::usb, 0x75736220U);
}

} // namespace
} // namespace fadewell
