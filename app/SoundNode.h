#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace fadewell {

/// One of the things that sound comes from or goes to, as the sound system has it: a stream of a
/// program, a device, a filter.
struct SoundNode {
    enum class Maker {
        fadewell,
        system, ///< the sound system itself
        program
    };

    std::uint32_t id = 0;
    std::string kind; ///< its media class
    std::string name;
    std::string state;
    Maker maker = Maker::system;
    std::string makerName;
    std::optional<std::string> appID{};      ///< the identifier of the app it belongs to
    std::vector<std::string> names{};        ///< everything that it and its program are called
    std::string target{};                    ///< where it is to go; empty: the default
    std::vector<std::uint32_t> neighbours{}; ///< nodes that it is linked to
};

} // namespace fadewell
