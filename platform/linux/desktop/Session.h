#pragma once

#include <functional>
#include <optional>
#include <string>

namespace fadewell {

/// What kind of desktop session this process runs in, by its environment.
struct Session {
    enum class Display {
        none,
        x11,
        wayland ///< also where X programs can run in it: their grabs see nothing of other windows
    };
    using Lookup = std::function<std::optional<std::string>(const char* variable)>;

    Display display = Display::none;
    std::string swaySocket{}; ///< of a compositor that speaks sway's protocol; empty: none

    [[nodiscard]] static Session current();
    [[nodiscard]] static Session from(const Lookup& environment);

    bool operator==(const Session&) const = default;
};

} // namespace fadewell
