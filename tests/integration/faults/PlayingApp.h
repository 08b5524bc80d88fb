#pragma once

#include "tests/integration/support/ChildProcess.h"

#include <chrono>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace fadewell::integration {

/// What Fadewell remembers of an app.
struct RememberedSettings {
    int percent = 100;
    bool isMuted = false;
    std::string output; ///< empty: the system's

    bool operator==(const RememberedSettings&) const = default;
    /// From an element of "fadewellctl apps --json".
    [[nodiscard]] static RememberedSettings fromJson(const nlohmann::json& app);
    [[nodiscard]] std::string text() const;
};

/// A player with a tone of its own, so that it can be told from the others at an output.
struct PlayingApp {
    using Clock = std::chrono::steady_clock;

    static constexpr double amplitude = 0.2; ///< four of them together stay below 1

    std::string name;
    double frequency = 0;
    std::string ownOutput{}; ///< what it asks the server for; empty: the default
    std::vector<std::string> command;
    bool isPulse = false; ///< plays through the Pulse server

    std::string id{}; ///< as Fadewell calls it
    RememberedSettings settings{};
    std::optional<ChildProcess> player{};
    Clock::time_point start{};
    /// Its own output went away while it played: the session manager doesn't always bring it back.
    bool mayHaveLeftItsOwnOutput = false;

    /// Ends what played and starts anew.
    void restart();
};

} // namespace fadewell::integration
