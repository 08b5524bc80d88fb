#pragma once

#include "app/AppWindows.h"
#include "app/AudioAccess.h"
#include "app/LoginItem.h"
#include "app/MixerModel.h"
#include "app/Workspace.h"
#include "audio/SoundServerInfo.h"
#include "audio/Tappability.h"
#include "base/SerialQueue.h"
#include "base/UserDefaults.h"
#include "ui/PanelWindow.h"
#include "ui/about/AboutWindow.h"
#include "ui/diagnostics/DiagnosticsWindow.h"
#include "ui/forms/HelpWindow.h"
#include "ui/onboarding/OnboardingWindow.h"
#include "ui/settings/SettingsWindow.h"
#include "ui/shortcuts/LocalKeyFilter.h"
#include "ui/tray/MissingTrayNotice.h"
#include "ui/tray/Tray.h"

#include <functional>
#include <memory>

namespace fadewell {

/// Fadewell's windows on this desktop, and its icon in the tray. Needs a QApplication. [main queue]
class DesktopWindows final : public AppWindows {
public:
    struct Parts {
        std::shared_ptr<MixerModel> model;
        std::shared_ptr<SerialQueue> mainQueue;
        std::shared_ptr<Workspace> workspace;
        std::shared_ptr<Tappability> tappability; ///< may be absent
        std::shared_ptr<UserDefaults> defaults;
        std::shared_ptr<LoginItem> loginItem;                    ///< may be absent
        std::shared_ptr<AudioAccess> audioAccess;                ///< may be absent
        std::shared_ptr<SoundServerInfo> soundServer;            ///< may be absent
        std::shared_ptr<shortcuts::KeyboardShortcuts> shortcuts; ///< may be absent
        std::optional<QString> build;                            ///< the build's number
        std::function<std::string(bool withNames)> diagnostics;  ///< may be absent
        std::function<void()> quit;
    };

    explicit DesktopWindows(Parts parts);

    /// Puts the icon into the tray, unless the user doesn't want it there.
    void showIcon();
    /// Opens the mixer once the program has started; where that begins with the onboarding, when it
    /// has been closed.
    void openMixerAtStart();

    [[nodiscard]] bool offers(AppWindow window) const override;
    void show(AppWindow window) override;

private:
    void setIconShown(bool isShown);
    void togglePanel(const std::optional<QRect>& icon);
    [[nodiscard]] bool isTrayMissing() const;
    [[nodiscard]] PanelWindow::Actions panelActions();
    [[nodiscard]] SettingsParts settingsParts();
    [[nodiscard]] OnboardingParts onboardingParts();

    Parts parts_;
    std::unique_ptr<LocalKeyFilter> keys_; ///< absent without shortcuts
    HelpWindow help_;
    std::shared_ptr<SystemPages> systemPages_;
    AboutWindow about_;
    DiagnosticsWindow diagnostics_;
    SettingsWindow settings_;
    OnboardingWindow onboarding_;
    PanelWindow panel_;
    std::unique_ptr<Tray> tray_;
    std::unique_ptr<MissingTrayNotice> notice_;
};

} // namespace fadewell
