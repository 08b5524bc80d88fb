#pragma once

#include <string>

namespace fadewell {

/// What was found out about the desktop's session.
struct SessionFacts {
    std::string desktop;     ///< XDG_CURRENT_DESKTOP
    std::string sessionType; ///< XDG_SESSION_TYPE
    std::string sandbox;     ///< "Flatpak", "Snap"; empty outside
    bool hasRuntimeFolder = true;
    bool canWriteSettings = true;
    std::string settingsFile;
};

} // namespace fadewell
