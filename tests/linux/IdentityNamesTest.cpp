#include "platform/linux/identity/ClientName.h"
#include "platform/linux/identity/KnownApps.h"
#include "platform/linux/identity/LocaleNames.h"
#include "platform/linux/identity/ProgramName.h"
#include "platform/linux/identity/UnitName.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fadewell {
namespace {

using testing::ElementsAre;
using Kind = Program::Kind;

TEST(UnitNameTest, FindsTheInnermostUnit)
{
    const std::pair<const char*, const char*> cases[] = {
        {"0::/user.slice/user@1000.service/app.slice/app-foo-1.scope/inner", "app-foo-1.scope"},
        {"0::/a/app-org.kde.konsole-4.scope/tab(7).scope\n", "tab(7).scope"},
        {"12:cpu:/x.service\n1:name=systemd:/user.slice/session-2.scope\n0::/\n",
         "session-2.scope"},
        {"1:name=systemd:/old.scope\n0::/new.scope\n", "new.scope"},
        {"0::/\n", ""},
        {"garbage\n\n::::", ""},
        {"", ""},
    };
    for (const auto& [text, unit] : cases) {
        EXPECT_EQ(unitOfCgroups(text), unit) << text;
    }
}

TEST(UnitNameTest, DecodesWhatUnitsStandFor)
{
    EXPECT_THAT(desktopIDsOfUnit("app-flatpak-org.foo.Bar-77.scope"),
                ElementsAre("org.foo.Bar", "flatpak-org.foo.Bar"));
    EXPECT_THAT(desktopIDsOfUnit("app-gnome-google\\x2dchrome-5.scope"),
                ElementsAre("google-chrome", "gnome-google-chrome"));
    EXPECT_THAT(desktopIDsOfUnit("app-gnome-google-chrome-5.scope"),
                ElementsAre("chrome", "google-chrome", "gnome-google-chrome"));
    EXPECT_THAT(desktopIDsOfUnit("app-org.foo.Bar@1a2b.service"), ElementsAre("org.foo.Bar"));
    EXPECT_THAT(desktopIDsOfUnit("app-org.foo.Bar.desktop@autostart.service"),
                ElementsAre("org.foo.Bar"));
    EXPECT_THAT(desktopIDsOfUnit("snap.code.url.0aaf5f5e-0000-4000-8000-123456789abc.scope"),
                ElementsAre("code_url"));
    EXPECT_THAT(desktopIDsOfUnit("dbus-:1.42-org.foo.Bar@0.service"), ElementsAre("org.foo.Bar"));
    for (const char* unit : {"session-2.scope",
                             "vte-spawn-0aaf5f5e-0000-4000-8000-123456789abc.scope",
                             "tab(7).scope",
                             "user@1000.service",
                             "app-.scope",
                             "app-x.scope",
                             "snap..scope",
                             "dbus-:.service",
                             ""})
    {
        EXPECT_TRUE(desktopIDsOfUnit(unit).empty()) << unit;
    }
    EXPECT_THAT(desktopIDsOfUnit("app-a\\x2-1.scope"), ElementsAre("a\\x2")) << "cut off";
}

TEST(ProgramNameTest, SeesThroughInterpreters)
{
    struct Case {
        const char* executable;
        std::vector<std::string> arguments;
        const char* name;
        Kind kind;
        const char* folderName = "";
    };
    const Case cases[] = {
        {"/usr/bin/mpv", {"anything"}, "mpv", Kind::binary},
        {"", {"/usr/bin/player --long title"}, "player", Kind::binary},
        {"", {}, "short", Kind::binary},
        {"/usr/bin/python3.11",
         {"python3", "-u", "-m", "radio.main", "x"},
         "radio.main",
         Kind::script},
        {"/usr/bin/python3.11", {"python3", "-c", "import x"}, "python", Kind::bareInterpreter},
        {"/usr/bin/perl5.36", {"perl", "-I", "lib", "-w", "/a/b.pl"}, "b.pl", Kind::script},
        {"/usr/bin/bash", {"-bash"}, "bash", Kind::bareInterpreter},
        {"/usr/bin/bash", {"bash", "--rcfile", "x", "-i"}, "bash", Kind::bareInterpreter},
        {"/usr/bin/bash", {"bash", "/dev/fd/3"}, "bash", Kind::bareInterpreter},
        {"/usr/bin/bash", {"bash", "-lc", "mpv"}, "bash", Kind::commandShell},
        {"/usr/bin/bash", {"bash", "-e", "/a/radio.sh"}, "radio.sh", Kind::script},
        {"/usr/bin/node",
         {"node", "--require", "x", "/srv/tuner/dist/index.js"},
         "index.js",
         Kind::script,
         "tuner"},
        {"/usr/bin/java",
         {"java", "-Xmx1g", "-cp", "a:b", "org.x.Main", "y"},
         "org.x.Main",
         Kind::script},
        {"/usr/bin/java", {"java", "-jar", "/opt/a/b.jar"}, "b.jar", Kind::script},
        {"/usr/bin/java", {"java", "-jar"}, "java", Kind::bareInterpreter},
        {"/usr/bin/wine64", {"wine", "/games/a.EXE"}, "a.EXE", Kind::script},
        {"/x/proton", {"proton", "run", "Z:\\games\\b.exe"}, "b.exe", Kind::script},
        {"/usr/bin/mpv", {"mpv", "C:\\a.exe"}, "mpv", Kind::binary},
        {"/usr/lib/electron/electron", {"electron", ""}, "electron", Kind::bareInterpreter},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        const auto program = programOfCommand(each.executable, each.arguments, "short");
        EXPECT_EQ(program.name, each.name);
        EXPECT_EQ(program.kind, each.kind);
        EXPECT_EQ(program.folderName, each.folderName);
    }
}

TEST(KnownAppsTest, RecogniseTheirLinuxNames)
{
    const std::pair<const char*, const char*> cases[] = {
        {"net.whatsapp.WhatsApp", "com.rtosta.ZapZap"},
        {"com.apple.mobilephone", "org.gnome.Calls"},
        {"us.zoom.xos", "Zoom"},
        {"com.microsoft.teams2", "teams-for-linux"},
        {"com.microsoft.teams", "Microsoft Teams - Preview"},
        {"Cisco-Systems.Spark", "CiscoCollabHost"},
        {"com.webex.meetingmanager", "atmgr"},
        {"com.hnc.Discord", "com.discordapp.DiscordCanary"},
        {"com.tinyspeck.slackmacgap", "slack_slack"},
        {"ru.keepcoder.Telegram", "64gram-desktop"},
        {"org.telegram.desktop", "TelegramDesktop"},
        {"com.facebook.archon", "Caprine"},
        {"org.whispersystems.signal-desktop", "org.signal.Signal"},
        {"com.skype.skype", "skypeforlinux"},
        {"com.apple.Safari", "org.gnome.Epiphany"},
        {"com.google.Chrome", "chromium_chromium"},
        {"com.microsoft.edgemac", "Microsoft-edge"},
        {"org.mozilla.firefox", "io.gitlab.LibreWolf-community"},
        {"com.brave.Browser", "Brave-browser"},
        {"com.operasoftware.Opera", "opera"},
        {"com.vivaldi.Vivaldi", "vivaldi-bin"},
        {"desktop.WhatsApp", "desktop.whatsapp"},
        {"com.apple.FaceTime", "com.apple.facetime"},
        {"company.thebrowser.Browser", "company.thebrowser.browser"},
        {"com.duckduckgo.macos.browser", "com.duckduckgo.macos.browser"},
    };
    const auto& known = KnownApps::instance();
    for (const auto& [id, alias] : cases) {
        EXPECT_EQ(known.canonicalID(alias), id) << alias;
        EXPECT_EQ(known.canonicalID(id), id);
        EXPECT_TRUE(known.name(id)) << id;
    }
    EXPECT_EQ(known.canonicalID("WEBRTC VoiceEngine"), std::nullopt);
    EXPECT_EQ(known.canonicalID(""), std::nullopt);
    EXPECT_TRUE(KnownApps("[1").aliases("us.zoom.xos").empty());
    EXPECT_EQ(KnownApps(R"({"apps":[3,null]})").role("bash"), KnownApps::Role::none);
}

TEST(KnownAppsTest, GiveNoAliasToTwoApplications)
{
    const auto& known = KnownApps::instance();
    for (const char* id : {"net.whatsapp.WhatsApp",
                           "us.zoom.xos",
                           "com.microsoft.teams2",
                           "com.microsoft.teams",
                           "com.google.Chrome",
                           "org.mozilla.firefox",
                           "ru.keepcoder.Telegram",
                           "org.telegram.desktop"})
    {
        EXPECT_FALSE(known.aliases(id).empty());
        for (const auto& alias : known.aliases(id)) {
            EXPECT_EQ(known.canonicalID(alias), id) << alias;
        }
    }
}

TEST(ClientNameTest, IsFitToBeShownAndNeverALibrarysName)
{
    EXPECT_EQ(tidied("  a\nb\u0085\xff\xc3"), "ab");
    EXPECT_LE(tidied(std::string(100000, 'x')).size(), 200U);
    ClientHints hints;
    hints.nodeName = "Radio";
    for (const char* generic : {"Chromium", "WEBRTC VoiceEngine", "audio-src", ""}) {
        hints.applicationName = generic;
        EXPECT_EQ(clientName(hints), "Radio");
    }
    hints.applicationName = "ALSA plug-in [tuner]";
    EXPECT_EQ(clientName(hints), "tuner");
    hints.applicationName = "Song [live]";
    EXPECT_EQ(clientName(hints), "Song [live]");
}

TEST(LocaleNamesTest, ListsTagsFromTheMostParticularOn)
{
    EXPECT_THAT(languageTags("sr_RS.UTF-8@latin"),
                ElementsAre("sr_RS@latin", "sr_RS", "sr@latin", "sr"));
    EXPECT_THAT(languageTags("de.UTF-8"), ElementsAre("de"));
    EXPECT_TRUE(languageTags("C.UTF-8").empty());
    EXPECT_TRUE(languageTags("").empty());
}

} // namespace
} // namespace fadewell
