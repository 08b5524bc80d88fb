#pragma once

#include "core/FourCharCode.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace fadewell {

/// A device that apps can play to.
struct OutputDevice {
    /// What sort of device it is, for its symbol. The order is part of the contract.
    enum class Kind {
        macBookSpeakers,
        iMacSpeakers,
        macMiniSpeakers,
        macStudioSpeakers,
        displaySpeakers,
        builtInSpeakers,
        headphones,
        airPods,
        airPodsPro,
        airPodsMax,
        beats,
        bluetooth,
        tv,
        airPlay,
        homePod,
        usb,
        virtual_,
        other,
    };

    /// Values of the transport-type property.
    struct Transport {
        Transport() = delete;
        static constexpr std::uint32_t builtIn = fourCharCode("bltn");
        static constexpr std::uint32_t bluetooth = fourCharCode("blue");
        static constexpr std::uint32_t bluetoothLE = fourCharCode("blea");
        static constexpr std::uint32_t hdmi = fourCharCode("hdmi");
        static constexpr std::uint32_t displayPort = fourCharCode("dprt");
        static constexpr std::uint32_t thunderbolt = fourCharCode("thun");
        static constexpr std::uint32_t airPlay = fourCharCode("airp");
        static constexpr std::uint32_t usb = fourCharCode("usb ");
        static constexpr std::uint32_t virtual_ = fourCharCode("virt");
        static constexpr std::uint32_t aggregate = fourCharCode("grup");
    };

    /// Every kind, in order of declaration.
    [[nodiscard]] static std::span<const Kind> allKinds();

    /// The kind's raw value, its name: "airPodsPro", "virtual".
    [[nodiscard]] static std::string_view rawValue(Kind kind);
    [[nodiscard]] static std::optional<Kind> kindFromRawValue(std::string_view rawValue);

    /// Classifies by transport, then by words in the name (case-sensitive). `isHeadphones` counts
    /// for built-in devices only.
    [[nodiscard]] static Kind
    classify(std::uint32_t transportType, std::string_view name, bool isHeadphones);

    std::string id;             ///< the UID, stable across restarts and reconnections
    std::uint32_t objectID = 0; ///< its audio object in this run
    std::string name;
    Kind kind = Kind::other;

    bool operator==(const OutputDevice&) const = default;
};

} // namespace fadewell
