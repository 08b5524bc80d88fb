#include "platform/linux/login/AutostartItem.h"

#include "app/LoginItem.h"
#include "platform/linux/identity/DesktopEntry.h"
#include "tests/linux/TemporaryFolder.h"
#include "tests/support/CapturedLog.h"

#include <gmock/gmock.h>

namespace fadewell {
namespace {

using enum LoginItemStatus;

class AutostartItemTest : public testing::Test {
protected:
    static constexpr const char* user = "config/autostart/app.fadewell.Fadewell.desktop";
    static constexpr const char* systems = "etc/autostart/app.fadewell.Fadewell.desktop";

    AutostartItemTest() { install("my programs/$fade%well"); }

    void install(const std::string& program)
    {
        folder_.write(program, "");
        std::filesystem::permissions(folder_.path() / program, std::filesystem::perms::owner_all);
        place_.program = folder_.path() / program;
        place_.userFolder = folder_.path() / "config/autostart";
        place_.systemFolders = {folder_.path() / "etc/autostart"};
        place_.programFolders = {folder_.path() / "bin"};
        place_.desktops = {"GNOME"};
    }
    LoginItemStatus status() { return AutostartItem(place_).status(); }

    TemporaryFolder folder_;
    AutostartItem::Place place_;
    CapturedLog log_;
};

TEST_F(AutostartItemTest, RegistersAndUnregistersTheProgramItself)
{
    LoginItem item(std::make_shared<AutostartItem>(place_));
    EXPECT_EQ(item.status.get(), notRegistered);
    item.setEnabled(true);
    EXPECT_EQ(item.status.get(), enabled);
    const auto entry = DesktopEntry::parse(folder_.read(user), {});
    EXPECT_THAT(entry.exec, testing::ElementsAre(place_.program.string(), "--background"));
    EXPECT_EQ(entry.tryExec, place_.program.string());
    EXPECT_TRUE(entry.isNoDisplay);
    item.setEnabled(false);
    EXPECT_EQ(item.status.get(), notRegistered);
    EXPECT_EQ(folder_.read(user), "");
    item.setEnabled(false);
    EXPECT_THAT(
        log_.take(),
        testing::ElementsAre("login-item error: Login item change failed: it was not registered"));
}

TEST_F(AutostartItemTest, TheAdministratorsEntryIsHiddenAndComesBack)
{
    install("bin/fadewell");
    folder_.write(systems, "[Desktop Entry]\nExec=fadewell --background\n");
    LoginItem item(std::make_shared<AutostartItem>(place_));
    EXPECT_EQ(item.status.get(), enabled);
    item.setEnabled(false);
    EXPECT_EQ(item.status.get(), notRegistered);
    EXPECT_TRUE(DesktopEntry::parse(folder_.read(user), {}).isHidden);
    item.setEnabled(true);
    EXPECT_EQ(item.status.get(), enabled);
}

TEST_F(AutostartItemTest, SeesWhatOthersDidToTheEntry)
{
    install("bin/fadewell");
    const std::pair<const char*, LoginItemStatus> cases[] = {
        {"Exec=fadewell", enabled},
        {"Exec=fadewell\nHidden=true", requiresApproval},
        {"Exec=fadewell\nX-GNOME-Autostart-enabled=false", requiresApproval},
        {"Exec=fadewell\n X-MATE-Autostart-enabled = false ", requiresApproval},
        {"Exec=fadewell\nOnlyShowIn=KDE;XFCE;", requiresApproval},
        {"Exec=fadewell\nOnlyShowIn=KDE;GNOME;", enabled},
        {"Exec=fadewell\nNotShowIn=GNOME;", requiresApproval},
        {"Exec=fadewell\n[Other]\nHidden=true", enabled},
        {"Exec=gone", notFound},
        {"Exec=fadewell\nTryExec=/gone", notFound},
        {"", notFound},
    };
    for (const auto& [text, expected] : cases) {
        folder_.write(user, std::string("[Desktop Entry]\n") + text);
        EXPECT_EQ(status(), expected) << text;
    }
    std::filesystem::remove(folder_.path() / user);
    std::filesystem::remove(place_.program);
    EXPECT_EQ(status(), notFound);
    EXPECT_TRUE(AutostartItem(place_).registerItem());
    EXPECT_EQ(folder_.read(user), "");
}

} // namespace
} // namespace fadewell
