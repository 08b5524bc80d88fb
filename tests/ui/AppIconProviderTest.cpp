// Which picture an app's row has, in a made-up icon theme.

#include "ui/AppIconProvider.h"

#include <QDir>
#include <QFile>
#include <QIcon>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace fadewell {
namespace {

void paint(const QString& file, Qt::GlobalColor color)
{
    QDir().mkpath(QFileInfo(file).path());
    QImage picture(24, 24, QImage::Format_RGB32);
    picture.fill(color);
    ASSERT_TRUE(picture.save(file, "PNG")) << file.toStdString();
}

void describeTheme(const QString& folder)
{
    QDir().mkpath(folder);
    QFile index(folder + "/index.theme");
    ASSERT_TRUE(index.open(QIODevice::WriteOnly));
    index.write("[Icon Theme]\nName=Made Up\nDirectories=24/apps\n\n[24/apps]\nSize=24\n");
}

TEST(AppIconProviderTest, LooksInTheThemeThenAmongSandboxedAppsThenTakesAGenericOne)
{
    const QTemporaryDir folder;
    const auto home = qgetenv("HOME");
    const auto theme = folder.filePath("icons/made-up");
    const auto exported = folder.filePath(".local/share/flatpak/exports/share/icons/hicolor");
    describeTheme(theme);
    describeTheme(exported);
    paint(theme + "/24/apps/player.png", Qt::red);
    paint(theme + "/24/apps/application-x-executable.png", Qt::gray);
    paint(exported + "/24/apps/player.png", Qt::yellow);
    paint(exported + "/24/apps/org.example.Sandboxed.png", Qt::green);
    const auto file = folder.filePath("a 100%/icon.png");
    paint(file, Qt::cyan);
    const auto large = folder.filePath("large.png");
    paint(large, Qt::magenta);
    ASSERT_TRUE(QFile::resize(large, 9 << 20));
    qputenv("HOME", folder.path().toUtf8());
    QIcon::setThemeSearchPaths({folder.filePath("icons")});
    QIcon::setThemeName("made-up");

    AppIconProvider provider;
    const struct {
        AppIcon icon;
        Qt::GlobalColor color;
    } cases[] = {
        {{"player", {}}, Qt::red},
        {{"player.png", {}}, Qt::red},
        {{"org.example.Sandboxed", {}}, Qt::green},
        {{{}, file.toStdString()}, Qt::cyan},
        {{file.toStdString(), {}}, Qt::cyan},
        {{"missing", {}}, Qt::gray},
        {{{}, "/missing/icon.png"}, Qt::gray},
        {{{}, large.toStdString()}, Qt::gray},
        {{}, Qt::gray},
    };
    for (const auto& [icon, color] : cases) {
        const auto id = AppIconProvider::address(icon).section("image://appicon/", 1);
        QSize size;
        const auto picture = provider.requestPixmap(id, &size, {24, 24}).toImage();
        EXPECT_EQ(size, QSize(24, 24)) << id.toStdString();
        EXPECT_EQ(picture.pixelColor(12, 12), QColor(color)) << id.toStdString();
    }
    qputenv("HOME", home);
}

} // namespace
} // namespace fadewell
