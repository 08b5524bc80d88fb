#include "core/OutputDevice.h"

#include <array>
#include <utility>

namespace fadewell {
namespace {

using Kind = OutputDevice::Kind;
using Transport = OutputDevice::Transport;

struct NameRule {
    std::string_view word;
    Kind kind;
};

// The first word that the name contains decides: longer words stand before their prefixes.
Kind classifyByName(std::string_view name, std::span<const NameRule> rules, Kind fallback)
{
    for (const auto& [word, kind] : rules) {
        if (name.find(word) != std::string_view::npos) {
            return kind;
        }
    }
    return fallback;
}

constexpr NameRule builtInRules[] = {
    {"MacBook", Kind::macBookSpeakers},
    {"iMac", Kind::iMacSpeakers},
    {"Mac mini", Kind::macMiniSpeakers},
    {"Mac Studio", Kind::macStudioSpeakers},
};
constexpr NameRule bluetoothRules[] = {
    {"AirPods Max", Kind::airPodsMax},
    {"AirPods Pro", Kind::airPodsPro},
    {"AirPods", Kind::airPods},
    {"Beats", Kind::beats},
    {"Powerbeats", Kind::beats},
};
constexpr NameRule displayRules[] = {{"Display", Kind::displaySpeakers}};
constexpr NameRule airPlayRules[] = {{"HomePod", Kind::homePod}};

constexpr std::pair<Kind, std::string_view> rawValues[] = {
    {Kind::macBookSpeakers, "macBookSpeakers"},
    {Kind::iMacSpeakers, "iMacSpeakers"},
    {Kind::macMiniSpeakers, "macMiniSpeakers"},
    {Kind::macStudioSpeakers, "macStudioSpeakers"},
    {Kind::displaySpeakers, "displaySpeakers"},
    {Kind::builtInSpeakers, "builtInSpeakers"},
    {Kind::headphones, "headphones"},
    {Kind::airPods, "airPods"},
    {Kind::airPodsPro, "airPodsPro"},
    {Kind::airPodsMax, "airPodsMax"},
    {Kind::beats, "beats"},
    {Kind::bluetooth, "bluetooth"},
    {Kind::tv, "tv"},
    {Kind::airPlay, "airPlay"},
    {Kind::homePod, "homePod"},
    {Kind::usb, "usb"},
    {Kind::virtual_, "virtual"},
    {Kind::other, "other"},
};

} // namespace

std::span<const Kind> OutputDevice::allKinds()
{
    static constexpr auto kinds = [] {
        std::array<Kind, std::size(rawValues)> result{};
        for (std::size_t index = 0; index < result.size(); ++index) {
            result[index] = rawValues[index].first;
        }
        return result;
    }();
    return kinds;
}

std::string_view OutputDevice::rawValue(Kind kind)
{
    for (const auto& [candidate, raw] : rawValues) {
        if (candidate == kind) {
            return raw;
        }
    }
    return {};
}

std::optional<Kind> OutputDevice::kindFromRawValue(std::string_view rawValue)
{
    for (const auto& [kind, raw] : rawValues) {
        if (raw == rawValue) {
            return kind;
        }
    }
    return std::nullopt;
}

Kind OutputDevice::classify(std::uint32_t transportType, std::string_view name, bool isHeadphones)
{
    switch (transportType) {
    case Transport::builtIn:
        return isHeadphones ? Kind::headphones
                            : classifyByName(name, builtInRules, Kind::builtInSpeakers);
    case Transport::bluetooth:
    case Transport::bluetoothLE:
        return classifyByName(name, bluetoothRules, Kind::bluetooth);
    case Transport::hdmi:
    case Transport::displayPort:
    case Transport::thunderbolt:
        return classifyByName(name, displayRules, Kind::tv);
    case Transport::airPlay:
        return classifyByName(name, airPlayRules, Kind::airPlay);
    case Transport::usb:
        return classifyByName(name, displayRules, Kind::usb);
    case Transport::virtual_:
    case Transport::aggregate:
        return Kind::virtual_;
    default:
        return Kind::other;
    }
}

} // namespace fadewell
