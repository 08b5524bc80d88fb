#pragma once

#include "ui/tray/TrayIcons.h"

#include <QString>

namespace fadewell {

/// How the icon has to look to be seen in a desktop's tray.
struct TrayLook {
    TrayIcons::Ground ground = TrayIcons::Ground::dark;
    bool isPainted = false; ///< the tray paints icons of the theme in the colour of its own text

    /// Nothing tells what a tray looks like. Most are dark whatever the windows are; the others
    /// follow what is set for windows. `desktops` as XDG_CURRENT_DESKTOP has them.
    [[nodiscard]] static TrayLook of(const QString& desktops, bool isDark);

    bool operator==(const TrayLook&) const = default;
};

} // namespace fadewell
