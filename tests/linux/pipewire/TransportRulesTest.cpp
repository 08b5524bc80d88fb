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
    const Case cases[] = {
        {"laptop", onCard, pci, "speaker", "bltn"},
        {"laptop's headphones", onCard, pci, "headphones", "bltn"},
        {"phone", onCard, {{"device.api", "alsa"}, {"device.bus", "platform"}}, nullptr, "bltn"},
        {"card without a bus", onCard, {{"device.api", "alsa"}}, nullptr, "bltn"},
        {"monitor", onCard, pci, "hdmi", "hdmi"},
        {"monitor before its route",
         {{"device.id", "41"}, {"device.profile.name", "hdmi-stereo"}},
         pci,
         nullptr,
         "hdmi"},
        {"dock's monitor", onCard, {{"device.bus", "usb"}}, "hdmi", "hdmi"},
        {"display port", onCard, pci, "displayport", "dprt"},
        {"USB", onCard, {{"device.api", "alsa"}, {"device.bus", "usb"}}, "headphones", "usb "},
        {"earbuds",
         onCard,
         {{"device.api", "bluez5"}, {"device.bus", "bluetooth"}},
         "headset",
         "blue"},
        {"earbuds on a USB adapter",
         onCard,
         {{"device.api", "bluez5"}, {"device.bus", "usb"}},
         nullptr,
         "blue"},
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
    GraphRoute headphones, headset, speaker;
    headphones.portType = "headphones";
    headset.portType = "headset";
    speaker.portType = "speaker";
    constexpr auto builtIn = fourCharCode("bltn");
    EXPECT_EQ(dataSource(builtIn, &headphones), fourCharCode("hdpn"));
    EXPECT_EQ(dataSource(builtIn, &headset), fourCharCode("hdpn"));
    EXPECT_NE(dataSource(builtIn, &speaker), fourCharCode("hdpn"));
    EXPECT_NE(dataSource(builtIn, nullptr), std::nullopt);
    EXPECT_EQ(dataSource(fourCharCode("usb "), &headphones), std::nullopt);
}

} // namespace
} // namespace fadewell::pipewire
