#pragma once

#include <string>

namespace fadewell {

/// The program that all sound goes through on this system, for people who look for a fault.
class SoundServerInfo {
public:
    struct State {
        std::string name;    ///< as it calls itself
        std::string version; ///< empty while it has never been connected
        bool isConnected = false;

        bool operator==(const State&) const = default;
    };

    virtual ~SoundServerInfo() = default;
    [[nodiscard]] virtual State soundServer() = 0; ///< [any thread]
};

} // namespace fadewell
