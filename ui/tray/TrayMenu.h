#pragma once

#include "app/AppWindows.h"
#include "app/MixerModel.h"
#include "ui/tray/TrayMenuEntry.h"

#include <vector>

namespace fadewell {

/// The tray icon's menu as the model stands. The first entry opens the mixer, because some desktops
/// answer a click on the icon with the menu; what leads to a window that isn't offered is left out.
/// [main queue]
[[nodiscard]] std::vector<TrayMenuEntry> trayMenu(const MixerModel& model,
                                                  const AppWindows& windows);

/// Whether the microphone can be switched: one that is off always, another when it can be muted.
[[nodiscard]] bool canToggleMicrophone(const MixerModel& model);

} // namespace fadewell
