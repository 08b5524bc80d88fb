#pragma once

#include "app/AudioAccess.h"
#include "app/LoginItem.h"
#include "app/MixerModel.h"
#include "app/Workspace.h"
#include "audio/SoundServerInfo.h"
#include "base/UserDefaults.h"
#include "shortcuts/KeyboardShortcuts.h"
#include "ui/forms/SystemPages.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace fadewell {

/// What the settings show and change. What may be absent isn't offered then.
struct SettingsParts {
    std::shared_ptr<MixerModel> model;
    std::shared_ptr<Workspace> workspace;
    std::shared_ptr<UserDefaults> defaults;
    std::shared_ptr<LoginItem> loginItem;                    ///< may be absent
    std::shared_ptr<AudioAccess> audioAccess;                ///< may be absent
    std::shared_ptr<SoundServerInfo> soundServer;            ///< may be absent
    std::shared_ptr<shortcuts::KeyboardShortcuts> shortcuts; ///< may be absent
    std::shared_ptr<SystemPages> systemPages;

    std::optional<QString> version;
    std::optional<QString> build; ///< the build's number

    std::function<void()> showAbout;
    std::function<void()> showDiagnostics; ///< may be absent
    std::function<void()> openMixer;
    std::function<void(bool isShown)> setIconShown; ///< the icon in the tray
    std::function<bool()> isTrayMissing;            ///< the icon is wanted, but nothing shows it
};

} // namespace fadewell
