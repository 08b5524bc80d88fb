#pragma once

#include <string>

namespace fadewell {

/// An icon nobody below the interface looks into: a name in the desktop's icon theme, or a file.
/// Both empty: no icon known.
struct AppIcon {
    std::string themeName;
    std::string file;

    /// The icon of an application about which nothing is known.
    [[nodiscard]] static AppIcon generic() { return {"application-x-executable", {}}; }

    bool operator==(const AppIcon&) const = default;
};

} // namespace fadewell
