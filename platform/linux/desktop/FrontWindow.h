#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace fadewell {

/// The window in front, as a desktop tells it. [main queue]
class FrontWindow {
public:
    struct Window {
        std::optional<std::int32_t> pid; ///< on this machine
        std::string appID;               ///< what the window calls its application; may be empty
        bool operator==(const Window&) const = default;
    };

    virtual ~FrontWindow() = default;

    /// Whether the desktop tells at all.
    [[nodiscard]] virtual bool isTold() = 0;
    /// Absent when no window is in front. Answers within a tenth of a second.
    [[nodiscard]] virtual std::optional<Window> window() = 0;
};

} // namespace fadewell
