#include "platform/linux/pipewire/TransportRules.h"

#include "core/FourCharCode.h"

#include <gtest/gtest.h>
#include <string_view>

namespace fadewell::pipewire {
namespace {

TEST(TransportRulesTest, NamesTheTransport)
{
    struct Case {
        const char* what;
        Properties node;
        Properties card;
        const char* port; ///< null: no route
        const char* transport;
    };
    const Properties onCard = {{"device.id", "41"}};
    const Properties pci = {{"device.api", "alsa"}, {"device.bus", "pci"}};
    const Properties usb = {{"device.api", "alsa"}, {"device.bus", "usb"}};
    const Properties earbuds = {{"device.api", "bluez5"}, {"device.bus", "usb"}};
    const Properties hdmi = {{"device.id", "41"}, {"device.profile.name", "hdmi-stereo"}};
    const Case cases[] = {
        {"laptop", onCard, pci, "speaker", "bltn"},
        {"laptop's headphones", onCard, pci, "headphones", "bltn"},
        {"phone", onCard, {{"device.api", "alsa"}, {"device.bus", "platform"}}, nullptr, "bltn"},
        {"card without a bus", onCard, {{"device.api", "alsa"}}, nullptr, "bltn"},
        {"monitor", onCard, pci, "hdmi", "hdmi"},
        {"monitor before its route", hdmi, pci, nullptr, "hdmi"},
        {"dock's monitor", onCard, usb, "hdmi", "hdmi"},
        {"display port", onCard, pci, "displayport", "dprt"},
        {"USB", onCard, usb, "headphones", "usb "},
        {"earbuds", onCard, {{"device.api", "bluez5"}}, "headset", "blue"},
        {"earbuds on a USB adapter", onCard, earbuds, nullptr, "blue"},
        {"node's own word", {{"device.id", "41"}, {"device.api", "bluez5"}}, {}, nullptr, "blue"},
        {"receiver", {{"node.name", "raop_sink.Den.local"}}, {}, nullptr, "airp"},
        {"network", {{"node.network", "true"}}, {}, nullptr, "airp"},
        {"null sink", {{"node.name", "null"}}, {}, nullptr, "virt"},
        {"virtual on a card", {{"device.id", "41"}, {"node.virtual", "true"}}, {}, nullptr, "virt"},
    };
    for (const Case& each : cases) {
        GraphRoute route;
        route.portType = each.port == nullptr ? "" : each.port;
        EXPECT_EQ(transportType(each.node, each.card, each.port == nullptr ? nullptr : &route),
                  fourCharCode(each.transport))
            << each.what;
    }
    EXPECT_EQ(transportType(onCard, {}, nullptr), 0U);
}

TEST(TransportRulesTest, OnlyBuiltInOutputsHaveADataSource)
{
    constexpr auto builtIn = fourCharCode("bltn");
    const auto source = [](std::uint32_t transport, const char* port) {
        GraphRoute route;
        route.portType = port;
        return dataSource(transport, &route);
    };
    EXPECT_EQ(source(builtIn, "headphones"), fourCharCode("hdpn"));
    EXPECT_EQ(source(builtIn, "headset"), fourCharCode("hdpn"));
    EXPECT_NE(source(builtIn, "speaker"), fourCharCode("hdpn"));
    EXPECT_NE(dataSource(builtIn, nullptr), std::nullopt);
    EXPECT_EQ(source(fourCharCode("usb "), "headphones"), std::nullopt);
}

} // namespace
} // namespace fadewell::pipewire
