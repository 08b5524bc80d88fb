#include "platform/linux/identity/DesktopEntry.h"

#include "platform/linux/identity/DesktopIndex.h"
#include "tests/linux/FakeMachine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fadewell {
namespace {

using testing::ElementsAre;

DesktopEntry parsed(const std::string& lines, const std::vector<std::string>& languages = {})
{
    return DesktopEntry::parse("[Desktop Entry]\n" + lines, languages);
}

TEST(DesktopEntryTest, ReadsOnlyItsMainGroupAndSkipsWhatMakesNoSense)
{
    const auto entry =
        DesktopEntry::parse("Name=before\n# Name=comment\n[Desktop Entry]\r\n"
                            " Name = Player\\sPro \r\nno equals sign\n=\nType=Application\n"
                            "Icon=a\\\\b\nHidden=true\nNoDisplay=True\nX-Flatpak=org.a.B\n"
                            "Categories=Audio;TerminalEmulatorish;\n"
                            "[Desktop Action new]\nName=New\nExec=other\n",
                            {});
    EXPECT_EQ(entry.name, "Player Pro");
    EXPECT_EQ(entry.icon, "a\\b");
    EXPECT_EQ(entry.flatpakID, "org.a.B");
    EXPECT_TRUE(entry.isApplication);
    EXPECT_TRUE(entry.isHidden);
    EXPECT_FALSE(entry.isNoDisplay) << "booleans are lower-case";
    EXPECT_FALSE(entry.isTerminalEmulator);
    EXPECT_TRUE(entry.exec.empty());
}

TEST(DesktopEntryTest, TakesTheNameInTheBestLanguage)
{
    const std::string names = "Name[de]=D\nName=plain\nName[de_AT]=A\nName[fr]=F\nName[=x\n";
    EXPECT_EQ(parsed(names).name, "plain");
    EXPECT_EQ(parsed(names, {"de_AT", "de"}).name, "A");
    EXPECT_EQ(parsed(names, {"de_CH", "de"}).name, "D");
    EXPECT_EQ(parsed(names, {"it"}).name, "plain");
    EXPECT_EQ(parsed("Name[fr]=F\n", {"it"}).name, "");
}

TEST(DesktopEntryTest, SplitsCommands)
{
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"player --new %U", {"player", "--new"}},
        {R"("/opt/My Player/run" "a \\"b\\" c" 100%%)",
         {"/opt/My Player/run", "a \"b\" c", "100%"}},
        {"\"unterminated arg", {"unterminated arg"}},
        {"a \"\" b", {"a", "", "b"}},
        {"   ", {}},
        {"%f", {}},
        {"trailing\\", {"trailing\\"}},
    };
    for (const auto& [command, arguments] : cases) {
        EXPECT_EQ(parsed("Exec=" + std::string(command) + '\n').exec, arguments) << command;
    }
}

TEST(DesktopIndexTest, PrefersTheEarlierFolderThePlainCommandAndUnmistakableFolders)
{
    const FakeMachine machine;
    auto config = machine.config().desktop;
    config.dataDirs.insert(config.dataDirs.begin(), machine.folder.path() / "home");
    const auto own = [&machine](const std::string& id, const std::string& lines) {
        machine.folder.write("home/applications/" + id + ".desktop", "[Desktop Entry]\n" + lines);
    };
    own("masked", "Type=Application\nHidden=true\n");
    own("replaced", "Type=Application\nName=Mine\nExec=mine\n");
    own("link", "Type=Link\nName=Link\nExec=linked\n");
    machine.install("masked", "Name=Masked\nExec=masked\n");
    machine.install("replaced", "Name=Theirs\nExec=theirs\n");
    machine.install("office-writer", "Name=Writer\nExec=office --writer %U\n");
    machine.install("office-start", "Name=Office\nExec=office %U\n");
    machine.install("office-hidden", "Name=Hidden\nExec=office\nNoDisplay=true\n");
    machine.program("/opt/suite/one");
    machine.program("/opt/suite/two");
    machine.install("one", "Name=One\nExec=" + machine.local("/opt/suite/one") + '\n');
    machine.install("two", "Name=Two\nExec=" + machine.local("/opt/suite/two") + '\n');
    machine.link("/usr/share/applications/loop", "/usr/share/applications");

    const DesktopIndex index(config);
    EXPECT_EQ(index.byID("masked"), nullptr);
    EXPECT_EQ(index.byProgram("masked"), nullptr);
    EXPECT_EQ(index.byID("link"), nullptr);
    EXPECT_EQ(index.byID("REPLACED")->name, "Mine");
    EXPECT_EQ(index.byProgram("theirs"), nullptr);
    EXPECT_EQ(index.byProgram("office")->name, "Office");
    EXPECT_EQ(index.byProgram("two")->name, "Two");
    EXPECT_EQ(index.byFolderOf(machine.local("/opt/suite/three")), nullptr)
        << "two applications share the folder";
}

} // namespace
} // namespace fadewell
