#pragma once

#include <string>
#include <vector>

namespace fadewell::integration {

/// What a sound server lists at one moment.
struct ServerState {
    struct Node {
        int id = 0;
        std::string serial;
        std::string name;
        bool isMuted = false;
    };
    /// Where a stream was sent through the "default" metadata.
    struct Target {
        int subject = 0;
        std::string value; ///< a node's name, or its serial or id as text
    };

    std::vector<Node> nodes;
    std::vector<Target> targets;
    std::string defaultOutput; ///< as the session manager announces it, empty if it doesn't

    /// Throws when the server doesn't answer.
    [[nodiscard]] static ServerState read();

    [[nodiscard]] bool hasNode(int id) const;
    /// By name, serial or id.
    [[nodiscard]] bool hasNode(const std::string& text) const;
};

} // namespace fadewell::integration
