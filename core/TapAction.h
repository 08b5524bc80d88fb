#pragma once

#include "core/TapTarget.h"

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace fadewell {

/// The steps that a tap plan is made of.
namespace tap_action {

struct Create {
    TapTarget target;
    bool operator==(const Create&) const = default;
};
struct Destroy {
    std::string appID;
    bool operator==(const Destroy&) const = default;
};
struct SetGain {
    std::string appID;
    double gain = 1.0;
    bool operator==(const SetGain&) const = default;
};
struct SetDuck {
    std::string appID;
    double duck = 1.0;
    bool operator==(const SetDuck&) const = default;
};
struct SetProcesses {
    std::string appID;
    std::vector<std::uint32_t> processObjectIDs;
    bool operator==(const SetProcesses&) const = default;
};
struct SetOutput {
    std::string appID;
    std::string deviceUID;
    bool operator==(const SetOutput&) const = default;
};
struct Start {
    std::string appID;
    bool operator==(const Start&) const = default;
};
struct Stop {
    std::string appID;
    bool operator==(const Stop&) const = default;
};

} // namespace tap_action

using TapAction = std::variant<tap_action::Create,
                               tap_action::Destroy,
                               tap_action::SetGain,
                               tap_action::SetDuck,
                               tap_action::SetProcesses,
                               tap_action::SetOutput,
                               tap_action::Start,
                               tap_action::Stop>;

} // namespace fadewell
