#pragma once

#include "ui/tray/bus/TrayPixmap.h"

#include <QString>

namespace fadewell {

/// The tooltip as tray hosts take it; Fadewell's is a line of text only.
struct TrayToolTip {
    QString iconName{};
    TrayPixmaps iconPixmap{};
    QString title{};
    QString text{};
};

QDBusArgument& operator<<(QDBusArgument& argument, const TrayToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayToolTip& toolTip);

} // namespace fadewell

Q_DECLARE_METATYPE(fadewell::TrayToolTip)
