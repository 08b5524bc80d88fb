#include "ui/tray/bus/TrayPixmap.h"

#include <QtEndian>

namespace fadewell {

TrayPixmap TrayPixmap::of(const QImage& image)
{
    const auto picture = image.convertToFormat(QImage::Format_ARGB32);
    TrayPixmap pixmap{.width = picture.width(), .height = picture.height()};
    pixmap.pixels.reserve(pixmap.width * pixmap.height * 4);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const quint32 pixel = qToBigEndian<quint32>(picture.pixel(x, y));
            pixmap.pixels.append(reinterpret_cast<const char*>(&pixel), sizeof pixel);
        }
    }
    return pixmap;
}

QDBusArgument& operator<<(QDBusArgument& argument, const TrayPixmap& pixmap)
{
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TrayPixmap& pixmap)
{
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.pixels;
    argument.endStructure();
    return argument;
}

} // namespace fadewell
