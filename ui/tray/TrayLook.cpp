#include "ui/tray/TrayLook.h"

#include <QStringList>

#include <algorithm>

namespace fadewell {

TrayLook TrayLook::of(const QString& desktops, bool isDark)
{
    const auto names = desktops.split(':');
    const auto isOneOf = [&names](const QStringList& known) {
        return std::any_of(
            names.begin(), names.end(), [&](const auto& name) { return known.contains(name); });
    };
    const bool isLight = !isDark && isOneOf({"KDE", "LXQt", "LXDE", "MATE"});
    return {isLight ? TrayIcons::Ground::light : TrayIcons::Ground::dark,
            isOneOf({"KDE", "GNOME", "Unity", "XFCE"})};
}

} // namespace fadewell
