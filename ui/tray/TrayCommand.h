#pragma once

namespace fadewell {

/// What an entry of the tray icon's menu does.
enum class TrayCommand {
    none,
    openMixer,
    toggleMicrophone,
    toggleCallMode,
    settings,
    about,
    quit
};

} // namespace fadewell
