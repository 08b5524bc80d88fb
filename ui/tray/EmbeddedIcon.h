#pragma once

#include "ui/tray/MenuBarIcon.h"
#include "ui/tray/ScrollSteps.h"
#include "ui/tray/TrayActions.h"
#include "ui/tray/TrayIcons.h"
#include "ui/tray/TrayMenuEntry.h"

#include <QMenu>
#include <QSystemTrayIcon>
#include <QTimer>

#include <optional>
#include <vector>

namespace fadewell {

/// The icon in a tray of the old kind, which embeds windows (X11 only). It appears by itself when
/// such a tray comes. Only to be made while there is no tray of the new kind: Qt would take that
/// one, and for good. [main thread, with a QApplication]
class EmbeddedIcon final : public QSystemTrayIcon {
public:
    explicit EmbeddedIcon(TrayActions& actions);

    /// `ground` is what is thought to be behind the icon until it can be seen.
    void setAppearance(const MenuBarIcon& icon, TrayIcons::Ground ground);
    void setEntries(const std::vector<TrayMenuEntry>& entries);

    /// What opens by the right button; it takes the keyboard.
    [[nodiscard]] QMenu& menu() { return menu_; }

    /// Whether there is such a tray now.
    [[nodiscard]] static bool isTrayThere() { return isSystemTrayAvailable(); }

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void rebuild();
    void draw();
    /// What the tray shows where the icon is transparent; absent while it isn't in a tray.
    [[nodiscard]] std::optional<TrayIcons::Ground> visibleGround() const;

    TrayActions& actions_;
    std::optional<MenuBarIcon> icon_;
    TrayIcons::Ground thought_ = TrayIcons::Ground::dark;
    std::optional<TrayIcons::Ground> seen_;
    QTimer settled_; ///< ends when a tray that took the icon has painted itself
    ScrollSteps steps_{ScrollSteps::Host::sendsAngles};
    QMenu menu_;
    std::vector<TrayMenuEntry> entries_; ///< one an action of the menu
};

} // namespace fadewell
