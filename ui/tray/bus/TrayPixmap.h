#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QImage>
#include <QList>
#include <QMetaType>

namespace fadewell {

/// A picture as tray hosts take it: rows of ARGB pixels, big-endian.
struct TrayPixmap {
    int width = 0;
    int height = 0;
    QByteArray pixels{};

    [[nodiscard]] static TrayPixmap of(const QImage& image);
    bool operator==(const TrayPixmap&) const = default;
};

using TrayPixmaps = QList<TrayPixmap>;

QDBusArgument& operator<<(QDBusArgument& argument, const TrayPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayPixmap& pixmap);

} // namespace fadewell

Q_DECLARE_METATYPE(fadewell::TrayPixmap)
