#pragma once

#include "platform/linux/desktop/FrontWindow.h"

#include <string>

namespace fadewell {

/// The activated window of a Wayland compositor that lists windows to taskbars (wlroots and its
/// kin). It tells no process identifiers.
///
/// Connects each time it is asked: a list that is kept up to date would wake us at every change of
/// any window's title.
class WaylandFrontWindow final : public FrontWindow {
public:
    /// `ownAppID` is what this program's own windows call it; `display` as in the environment,
    /// empty for the environment's.
    explicit WaylandFrontWindow(std::string ownAppID, std::string display = {});

    [[nodiscard]] bool isTold() override;
    [[nodiscard]] std::optional<Window> window() override;

private:
    struct Answer {
        bool isTold = false; ///< the compositor lists windows
        std::optional<Window> window{};
    };

    [[nodiscard]] Answer ask() const;

    const std::string ownAppID_;
    const std::string display_;
};

} // namespace fadewell
