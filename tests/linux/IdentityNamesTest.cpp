#include "core/KnownCallApps.h"
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
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"app-flatpak-org.foo.Bar-77.scope", {"org.foo.Bar", "flatpak-org.foo.Bar"}},
        {"app-gnome-google\\x2dchrome-5.scope", {"google-chrome", "gnome-google-chrome"}},
        {"app-gnome-google-chrome-5.scope", {"chrome", "google-chrome", "gnome-google-chrome"}},
        {"app-org.foo.Bar@1a2b.service", {"org.foo.Bar"}},
        {"app-org.foo.Bar.desktop@autostart.service", {"org.foo.Bar"}},
        {"snap.code.url.0aaf5f5e-0000-4000-8000-123456789abc.scope", {"code_url"}},
        {"dbus-:1.42-org.foo.Bar@0.service", {"org.foo.Bar"}},
        {"app-a\\x2-1.scope", {"a\\x2"}}, // cut off
        {"vte-spawn-0aaf5f5e-0000-4000-8000-123456789abc.scope", {}},
        {"tab(7).scope", {}},
        {"user@1000.service", {}},
        {"app-.scope", {}},
        {"app-x.scope", {}},
        {"snap..scope", {}},
        {"dbus-:.service", {}},
        {"", {}},
    };
    for (const auto& [unit, ids] : cases) {
        EXPECT_EQ(desktopIDsOfUnit(unit), ids) << unit;
    }
}

TEST(ProgramNameTest, SeesThroughInterpreters)
{
    constexpr auto bare = Kind::bareInterpreter;
    constexpr auto script = Kind::script;
    const struct {
        const char* executable;
        std::vector<std::string> arguments;
        const char* name;
        Kind kind;
        const char* folderName = "";
    } cases[] = {
        {"/usr/bin/mpv", {"anything"}, "mpv", Kind::binary},
        {"", {"/usr/bin/player --long title"}, "player", Kind::binary},
        {"", {}, "short", Kind::binary},
        {"/usr/bin/python3.11", {"python3", "-u", "-m", "radio.main"}, "radio.main", script},
        {"/usr/bin/python3.11", {"python3", "-c", "import x"}, "python", bare},
        {"/usr/bin/perl5.36", {"perl", "-I", "lib", "-w", "/a/b.pl"}, "b.pl", script},
        {"/usr/bin/bash", {"-bash"}, "bash", bare},
        {"/usr/bin/bash", {"bash", "--rcfile", "x", "-i"}, "bash", bare},
        {"/usr/bin/bash", {"bash", "/dev/fd/3"}, "bash", bare},
        {"/usr/bin/bash", {"bash", "-lc", "mpv"}, "bash", Kind::commandShell},
        {"/usr/bin/bash", {"bash", "-e", "/a/radio.sh"}, "radio.sh", script},
        {"/usr/bin/node",
         {"node", "-r", "x", "/srv/radio/dist/index.js"},
         "index.js",
         script,
         "radio"},
        {"/usr/bin/java", {"java", "-Xmx1g", "-cp", "a:b", "org.x.Main"}, "org.x.Main", script},
        {"/usr/bin/java", {"java", "-jar", "/opt/a/b.jar"}, "b.jar", script},
        {"/usr/bin/java", {"java", "-jar"}, "java", bare},
        {"/usr/bin/wine64", {"wine", "/games/a.EXE"}, "a.EXE", script},
        {"/x/proton", {"proton", "run", "Z:\\games\\b.exe"}, "b.exe", script},
        {"/usr/bin/mpv", {"mpv", "C:\\a.exe"}, "mpv", Kind::binary},
        {"/usr/lib/electron/electron", {"electron", ""}, "electron", bare},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        const auto program = programOfCommand(each.executable, each.arguments, "short");
        EXPECT_EQ(program.name, each.name);
        EXPECT_EQ(program.kind, each.kind);
        EXPECT_EQ(program.folderName, each.folderName);
    }
}

TEST(KnownAppsTest, KnowEveryCallAppByNamesThatNoOtherHas)
{
    const auto& known = KnownApps::instance();
    std::size_t aliases = 0;
    for (const auto& id : KnownCallApps::all()) {
        EXPECT_EQ(known.canonicalID(id), id);
        EXPECT_TRUE(known.name(id)) << id;
        for (const auto& alias : known.aliases(id)) {
            EXPECT_EQ(known.canonicalID(alias), id) << alias;
            ++aliases;
        }
    }
    EXPECT_GT(aliases, 100U);
    EXPECT_EQ(known.canonicalID("com.rtosta.ZapZap"), "net.whatsapp.WhatsApp") << "in another case";
    EXPECT_EQ(known.canonicalID("WEBRTC VoiceEngine"), std::nullopt);
    EXPECT_EQ(known.canonicalID(""), std::nullopt);
    EXPECT_TRUE(KnownApps("[1").aliases("us.zoom.xos").empty());
    EXPECT_EQ(KnownApps(R"({"apps":[3,null]})").role("bash"), KnownApps::Role::none);
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
