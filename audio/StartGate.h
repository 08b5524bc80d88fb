#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace fadewell {

/// An app whose sound must never be heard as it comes.
struct GatedApp {
    std::string appID;
    double gain = 1; ///< 0 to 1
    std::optional<std::string> outputDeviceUID{};

    bool operator==(const GatedApp&) const = default;
};

/// What call mode does to apps that begin to play.
struct LoweredStarts {
    double duck = 1;              ///< the factor they go down to, 0 to 1
    std::set<std::string> exempt; ///< identifiers of the apps that are never lowered

    bool operator==(const LoweredStarts&) const = default;
};

/// Keeps the first frames of apps from being heard wrong before the engine has built their path. A
/// platform that mutes an app until it is tapped needs none.
class StartGate {
public:
    virtual ~StartGate() = default;

    /// Takes the complete list; an app that is no longer in it plays as it comes. Returns at once.
    /// [any thread]
    virtual void setGatedApps(std::vector<GatedApp> apps) = 0;

    /// From now on an app that begins to play goes down along the duck's ramp from its first frame;
    /// absent: call mode is off. Returns at once. [any thread]
    virtual void setLoweredStarts(std::optional<LoweredStarts> lowered) = 0;
};

} // namespace fadewell
