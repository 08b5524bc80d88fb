#pragma once

#include "app/AppWindows.h"
#include "app/WindowsParts.h"
#include "ui/PanelWindow.h"
#include "ui/about/AboutWindow.h"
#include "ui/diagnostics/DiagnosticsWindow.h"
#include "ui/forms/HelpWindow.h"
#include "ui/onboarding/OnboardingWindow.h"
#include "ui/settings/SettingsWindow.h"
#include "ui/shortcuts/LocalKeyFilter.h"
#include "ui/tray/MissingTrayNotice.h"
#include "ui/tray/Tray.h"

#include <memory>
#include <optional>

namespace fadewell {

/// Fadewell's windows on this desktop, and its icon in the tray. Needs a QApplication. [main queue]
class DesktopWindows final : public AppWindows {
public:
    /// `build`: the build's number, if it has one.
    DesktopWindows(WindowsParts parts, std::optional<QString> build);

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

    WindowsParts parts_;
    std::optional<QString> build_;
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
