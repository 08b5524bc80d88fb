#pragma once

#include <optional>
#include <string>
#include <vector>

namespace fadewell {

/// The dictionary that an aggregate device is made from; an absent member is an absent entry.
struct AggregateDescription {
    struct SubDevice {
        std::string uid{};
        bool operator==(const SubDevice&) const = default;
    };
    struct SubTap {
        std::string uid{};           ///< the tap's UUID
        std::optional<bool> drift{}; ///< whether clock drift is compensated
        bool operator==(const SubTap&) const = default;
    };

    std::string name{};
    std::string uid{};
    std::string master{}; ///< UID of the main sub-device
    bool isPrivate = false;
    std::optional<bool> stacked{};
    std::optional<bool> tapAutoStart{};
    std::vector<SubDevice> subDevices{};
    std::vector<SubTap> taps{};

    bool operator==(const AggregateDescription&) const = default;
};

} // namespace fadewell
