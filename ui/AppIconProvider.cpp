#include "ui/AppIconProvider.h"

#include "ui/style/SymbolImageProvider.h"

#include <QDir>
#include <QIcon>
#include <QImageReader>
#include <QPixmap>
#include <QUrl>

namespace fadewell {
namespace {

constexpr int ordinarySize = 24;
constexpr qint64 largestFile = 8 << 20; // Other programs name these files.

QPixmap themed(const QString& name, const QSize& size)
{
    return QIcon::fromTheme(name).pixmap(size, 1.0);
}

QPixmap fromFile(const QString& path, const QSize& size)
{
    const QFileInfo file(path);
    if (!file.isFile() || file.size() > largestFile) {
        return {};
    }
    QImageReader reader(path);
    reader.setScaledSize(reader.size().scaled(size, Qt::KeepAspectRatio));
    return QPixmap::fromImageReader(&reader);
}

/// By what programs call their icons: mostly a name, now and then a file or the name of one.
QPixmap named(const QString& name, const QSize& size)
{
    if (name.contains('/')) {
        return fromFile(name, size);
    }
    const auto picture = themed(name, size);
    const bool isFileName = name.endsWith(QLatin1String(".png")) ||
                            name.endsWith(QLatin1String(".svg")) ||
                            name.endsWith(QLatin1String(".xpm"));
    return picture.isNull() && isFileName ? themed(name.chopped(4), size) : picture;
}

QPixmap generic(const QSize& size)
{
    const auto standard = themed(QStringLiteral("application-x-executable"), size);
    return standard.isNull() ? QPixmap::fromImage(SymbolImageProvider::draw(
                                   QStringLiteral("app"), 0, QColor(0x88, 0x88, 0x8e), size))
                             : standard;
}

/// Where Flatpak puts the icons of its apps, also where the session's environment doesn't say so.
void addExportedIcons()
{
    auto paths = QIcon::themeSearchPaths();
    for (const auto& folder :
         {QDir::homePath() + QStringLiteral("/.local/share/flatpak/exports/share/icons"),
          QStringLiteral("/var/lib/flatpak/exports/share/icons")})
    {
        if (!paths.contains(folder) && QFileInfo(folder).isDir()) {
            paths.append(folder);
        }
    }
    QIcon::setThemeSearchPaths(paths);
}

} // namespace

AppIconProvider::AppIconProvider()
    : QQuickImageProvider(QQuickImageProvider::Pixmap)
{
    addExportedIcons();
}

QPixmap AppIconProvider::requestPixmap(const QString& id, QSize* size, const QSize& requestedSize)
{
    const QSize wanted =
        requestedSize.isEmpty() ? QSize(ordinarySize, ordinarySize) : requestedSize;
    const auto kind = id.section('/', 0, 0);
    const auto value = QUrl::fromPercentEncoding(id.section('/', 1).toUtf8());
    auto picture = kind == QLatin1String("file") ? fromFile(value, wanted) : named(value, wanted);
    if (picture.isNull()) {
        picture = generic(wanted);
    }
    if (size != nullptr) {
        *size = picture.size();
    }
    return picture;
}

QString AppIconProvider::address(const AppIcon& icon)
{
    const bool isFile = icon.themeName.empty() && !icon.file.empty();
    const auto& value = isFile ? icon.file : icon.themeName;
    return QStringLiteral("image://appicon/%1/%2")
        .arg(isFile ? QStringLiteral("file") : QStringLiteral("theme"),
             QString::fromUtf8(QUrl::toPercentEncoding(QString::fromStdString(value))));
}

} // namespace fadewell
