#include "ui/forms/PlatformTexts.h"
#include "ui/forms/SystemPages.h"

#include <QMetaProperty>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fadewell {
namespace {

TEST(PlatformTextsTest, NoTextNamesAnotherSystem)
{
    const PlatformTexts texts(PlatformTexts::System::freeDesktop);
    const auto* meta = texts.metaObject();
    for (int index = meta->propertyOffset(); index < meta->propertyCount(); ++index) {
        const auto text = meta->property(index).read(&texts).toString();
        EXPECT_FALSE(text.isEmpty());
        for (const char* foreign : {"Mac", "macOS", "menu bar", "Menu Bar", "Login Items"}) {
            EXPECT_FALSE(text.contains(foreign)) << text.toStdString();
        }
    }
}

TEST(SystemPagesTest, ADesktopsOwnPageOpensWhereThereIsOneElseTheExplanation)
{
    using enum SystemPage;
    const struct {
        SystemPage page;
        QStringList desktops;
        QStringList installed;
        bool starts;
        const char* title;
        const char* opened;
    } cases[] = {
        {loginItems,
         {"KDE"},
         {"systemsettings"},
         true,
         "Open System Settings",
         "systemsettings kcm_autostart"},
        {loginItems,
         {"ubuntu", "GNOME"},
         {"gnome-tweaks"},
         true,
         "Open System Settings",
         "gnome-tweaks"},
        {loginItems, {"GNOME"}, {"systemsettings"}, true, "How to Allow It…", "explanation"},
        {loginItems, {}, {"gnome-tweaks"}, true, "How to Allow It…", "explanation"},
        {loginItems,
         {"XFCE"},
         {"xfce4-session-settings"},
         false,
         "Open System Settings",
         "explanation"},
        {audioPermission, {"KDE"}, {"systemsettings"}, true, "How to Allow It…", "explanation"},
    };
    for (const auto& each : cases) {
        QString opened;
        const SystemPages pages(
            {.desktops = each.desktops,
             .isInstalled = [&](const auto& program) { return each.installed.contains(program); },
             .start =
                 [&](const auto& program, const auto& arguments) {
                     opened = (QStringList(program) + arguments).join(' ');
                     return each.starts;
                 },
             .explain =
                 [&](SystemPage) {
                     opened = "explanation";
                 }});
        EXPECT_EQ(pages.openTitle(each.page), each.title);
        pages.open(each.page);
        EXPECT_EQ(opened, each.opened);
    }
}

} // namespace
} // namespace fadewell
