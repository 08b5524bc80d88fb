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

TEST(OutputDeviceTest, EveryKindHasANameOfItsOwn)
{
    for (const Kind kind : OutputDevice::allKinds()) {
        EXPECT_EQ(OutputDevice::kindFromRawValue(OutputDevice::rawValue(kind)), kind);
    }
    EXPECT_EQ(OutputDevice::kindFromRawValue("virtual"), Kind::virtual_);
    EXPECT_FALSE(OutputDevice::kindFromRawValue("virtual_"));
}

} // namespace
} // namespace fadewell
