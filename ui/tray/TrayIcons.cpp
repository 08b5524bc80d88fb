#include "ui/tray/TrayIcons.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

#include <array>

// The pictures are in a static library, from which the linker takes only what is named.
static void loadSymbols()
{
    Q_INIT_RESOURCE(tray_symbols);
}

namespace fadewell {
namespace {

constexpr std::array sizes{16, 22, 24, 32, 48};

/// The symbol as a document in the colour that stands out from the ground.
QByteArray document(const QString& symbol, TrayIcons::Ground ground)
{
    loadSymbols();
    QFile file(":/fadewell/tray/" + symbol + ".svg");
    if (!file.open(QFile::ReadOnly)) {
        return {};
    }
    // The one colour of the files, which stays readable where a host shows them as they are.
    return file.readAll().replace("#808080",
                                  ground == TrayIcons::Ground::dark ? "#f2f2f2" : "#2e3436");
}

QList<QImage> draw(const QString& symbol, TrayIcons::Ground ground)
{
    QSvgRenderer renderer(document(symbol, ground));
    QList<QImage> images;
    for (const int size : sizes) {
        if (!renderer.isValid()) {
            break;
        }
        QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        renderer.render(&painter);
        painter.end();
        images.append(image);
    }
    return images;
}

} // namespace

QString TrayIcons::themeName(const QString& symbol)
{
    const QString name = "app.fadewell.Fadewell";
    if (symbol == "mic.slash") {
        return name + "-microphone-off-symbolic";
    }
    return symbol == "phone" ? name + "-call-mode-symbolic" : name + "-symbolic";
}

QString TrayIcons::themePath()
{
    const QDir folder(QCoreApplication::applicationDirPath() + "/../share/icons");
    return folder.exists("hicolor/symbolic/apps/app.fadewell.Fadewell-symbolic.svg")
               ? folder.canonicalPath()
               : QString();
}

TrayPixmaps TrayIcons::pixmaps(const QString& symbol, Ground ground)
{
    TrayPixmaps pixmaps;
    for (const auto& image : draw(symbol, ground)) {
        pixmaps.append(TrayPixmap::of(image));
    }
    return pixmaps;
}

QIcon TrayIcons::icon(const QString& symbol, Ground ground)
{
    QIcon icon;
    for (const auto& image : draw(symbol, ground)) {
        icon.addPixmap(QPixmap::fromImage(image));
    }
    return icon;
}

} // namespace fadewell
