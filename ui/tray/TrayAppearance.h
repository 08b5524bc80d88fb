#pragma once

#include "ui/tray/bus/TrayPixmap.h"

#include <QString>

namespace fadewell {

/// How the tray icon looks at one moment, and what it is called.
struct TrayAppearance {
    QString
        iconName{}; ///< in the icon theme, for hosts that paint it in their own colour; or empty
    TrayPixmaps pixmaps{}; ///< the same picture in all sizes
    QString label{};       ///< localized
};

} // namespace fadewell
