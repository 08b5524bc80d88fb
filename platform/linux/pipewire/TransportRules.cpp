#include "platform/linux/pipewire/TransportRules.h"

#include "audio/AudioTypes.h"
#include "core/FourCharCode.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace fadewell::pipewire {

namespace {

constexpr std::uint32_t builtIn = fourCharCode("bltn");
constexpr std::uint32_t hdmi = fourCharCode("hdmi");
constexpr std::uint32_t displayPort = fourCharCode("dprt");
constexpr std::uint32_t bluetooth = fourCharCode("blue");
constexpr std::uint32_t airPlay = fourCharCode("airp");
constexpr std::uint32_t virtual_ = fourCharCode("virt");
constexpr std::uint32_t internalSpeaker = fourCharCode("ispk");

struct Named {
    std::string_view name;
    std::uint32_t transport;
};
constexpr std::array buses = {
    Named{"usb", fourCharCode("usb ")},
    Named{"bluetooth", bluetooth},
    Named{"firewire", fourCharCode("1394")},
    Named{"thunderbolt", fourCharCode("thun")},
    Named{"pci", builtIn},
    Named{"platform", builtIn},
};

/// The sink's own word first, then its card's.
std::string_view either(const Properties& node, const Properties& card, std::string_view key)
{
    return find(node, key).value_or(find(card, key).value_or(""));
}

/// A receiver elsewhere in the network.
bool isNetwork(const Properties& node)
{
    const std::string_view name = find(node, PW_KEY_NODE_NAME).value_or("");
    return isTrue(node, "node.network") || name.starts_with("raop_sink.") ||
           name.starts_with("rtp_sink.") || find(node, "raop.ip") || find(node, "rtp.session");
}

std::uint32_t displayTransport(const Properties& node, const GraphRoute* route)
{
    const std::string_view port = route != nullptr ? std::string_view(route->portType) : "";
    if (port == "displayport" || port == "dp") {
        return displayPort;
    }
    const bool isHDMI =
        port == "hdmi" ||
        (port.empty() && find(node, "device.profile.name").value_or("").starts_with("hdmi-"));
    return isHDMI ? hdmi : 0;
}

} // namespace

std::uint32_t transportType(const Properties& node, const Properties& card, const GraphRoute* route)
{
    if (isNetwork(node)) {
        return airPlay;
    }
    const std::string_view api = either(node, card, PW_KEY_DEVICE_API);
    if (api == "bluez5") {
        return bluetooth;
    }
    if (const std::uint32_t display = displayTransport(node, route)) {
        return display;
    }
    const std::string_view bus = either(node, card, PW_KEY_DEVICE_BUS);
    const auto named = std::find_if(
        buses.begin(), buses.end(), [bus](const Named& known) { return known.name == bus; });
    if (named != buses.end()) {
        return named->transport;
    }
    if (api == "alsa") {
        return builtIn;
    }
    const bool hasCard = find(node, PW_KEY_DEVICE_ID).has_value();
    return isTrue(node, PW_KEY_NODE_VIRTUAL) || !hasCard ? virtual_ : 0;
}

std::optional<std::uint32_t> dataSource(std::uint32_t transport, const GraphRoute* route)
{
    if (transport != builtIn) {
        return std::nullopt;
    }
    const bool isOnHead =
        route != nullptr && (route->portType == "headphones" || route->portType == "headset");
    return isOnHead ? kAudioDataSourceHeadphones : internalSpeaker;
}

} // namespace fadewell::pipewire
