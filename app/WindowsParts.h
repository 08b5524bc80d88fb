#pragma once

#include "app/AppWindows.h"
#include "app/AudioAccess.h"
#include "app/GatherDiagnostics.h"
#include "app/LoginItem.h"
#include "app/MixerModel.h"
#include "app/Workspace.h"
#include "audio/SoundServerInfo.h"
#include "audio/Tappability.h"
#include "base/SerialQueue.h"
#include "base/UserDefaults.h"
#include "shortcuts/KeyboardShortcuts.h"

#include <functional>
#include <memory>

namespace fadewell {

/// What the windows and the tray icon stand on.
struct WindowsParts {
    std::shared_ptr<MixerModel> model;
    std::shared_ptr<SerialQueue> mainQueue;
    std::shared_ptr<Workspace> workspace;
    std::shared_ptr<Tappability> tappability; ///< may be absent
    std::shared_ptr<UserDefaults> defaults;
    std::shared_ptr<LoginItem> loginItem;                    ///< may be absent
    std::shared_ptr<AudioAccess> audioAccess;                ///< may be absent
    std::shared_ptr<SoundServerInfo> soundServer;            ///< may be absent
    std::shared_ptr<shortcuts::KeyboardShortcuts> shortcuts; ///< may be absent
    GatherDiagnostics diagnostics;                           ///< may be absent
    std::function<void()> quit;
};

/// Makes the windows of a program that has a display, and puts its icon into the tray. Empty where
/// there is no display. [main queue]
using WindowsFactory = std::function<std::shared_ptr<AppWindows>(const WindowsParts& parts)>;

} // namespace fadewell
