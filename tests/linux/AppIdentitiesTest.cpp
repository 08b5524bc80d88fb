#include "platform/linux/identity/AppIdentities.h"

#include "base/VirtualTime.h"
#include "platform/linux/LinuxProcessLookup.h"
#include "platform/linux/XdgWorkspace.h"
#include "tests/linux/FakeMachine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fadewell {
namespace {

constexpr std::int32_t madeUp = 0x40000001;

void installApplications(const FakeMachine& machine)
{
    machine.program("/usr/lib/firefox-esr/firefox-esr");
    machine.program("/opt/google/chrome/google-chrome");
    machine.program("/usr/lib/slack/slack");
    machine.program("/opt/acme/acme-wrapper");
    machine.program("/usr/bin/pw-cat");
    machine.link("/usr/bin/pw-play", "/usr/bin/pw-cat");
    machine.link("/usr/bin/google-chrome-stable", "/opt/google/chrome/google-chrome");
    machine.link("/usr/bin/slack", "/usr/lib/slack/slack");
    machine.link("/usr/bin/acme", "/opt/acme/acme-wrapper");

    machine.install("firefox-esr", "Name=Firefox ESR\nExec=/usr/lib/firefox-esr/firefox-esr %u\n");
    machine.install("google-chrome",
                    "Name=Google Chrome\nExec=" + machine.local("/usr/bin/google-chrome-stable") +
                        " %U\nIcon=google-chrome\n");
    machine.install("chrome-abc-Default",
                    "Name=Some Page\nExec=" + machine.local("/opt/google/chrome/google-chrome") +
                        " --app-id=abc\nStartupWMClass=crx_abc\n");
    machine.install("slack", "Name=Slack\nExec=env A=b slack %U\nStartupWMClass=Slack\n");
    machine.install("acme", "Name=Acme Recorder\nExec=acme\nIcon=/opt/acme/icon.png\n");
    machine.install("org.example.Player",
                    "Name=Player\nName[de]=Spieler\nExec=player %F\nIcon=player-icon\n");
    machine.install("org.kde.konsole",
                    "Name=Konsole\nExec=konsole\nCategories=Qt;System;TerminalEmulator;\n");
    machine.install("code", "Name=Code\nExec=code %F\n");
    machine.install("mpv", "Name=mpv Media Player\nExec=mpv -- %U\nIcon=mpv\n");
    machine.install("steam", "Name=Steam\nExec=steam %U\n");
    machine.install("game", "Name=Some Game\nExec=steam steam://rungameid/1\n");
    machine.install("tune", "Name=Tune\nExec=tune\n");
    machine.install("mixtapes", "Name=Mixtapes\nExec=mixtapes\n");
    machine.install("tunebox", "Name=Tunebox\nExec=tunebox\n");
    machine.install("discord_discord", "Name=Discord\nExec=/snap/bin/discord\n");
    machine.install("com.spotify.Client",
                    "Name=Spotify\nExec=/usr/bin/flatpak run com.spotify.Client\n"
                    "X-Flatpak=com.spotify.Client\n");
    machine.install("org.gnome.Shell", "Name=GNOME Shell\nExec=gnome-shell\nNoDisplay=true\n");
    machine.install("python3.11", "Name=Python\nExec=/usr/bin/python3.11\nNoDisplay=true\n");
}

void startProcesses(const FakeMachine& machine)
{
    const std::string spotify = "app-flatpak-com.spotify.Client-100.scope";
    const std::string inSlack = "app-gnome-slack-300.scope";
    const std::string inKonsole = "app-org.kde.konsole-400.scope";
    const std::string inCode = "app-gnome-code-500.scope";
    const std::map<std::string, std::string> byFirefox{
        {"GIO_LAUNCHED_DESKTOP_FILE", "/usr/share/applications/firefox-esr.desktop"},
        {"GIO_LAUNCHED_DESKTOP_FILE_PID", "310"}};
    const FakeMachine::Process processes[] = {
        {100, 1, "/usr/bin/bwrap", {}, spotify, {}, ""},
        {101, 100, "/usr/bin/bwrap", {}, spotify, {}, "com.spotify.Client"},
        {102, 101, "/app/spotify", {}, spotify, {}, "com.spotify.Client"},
        {103,
         102,
         "/app/spotify",
         {"spotify", "--type=utility"},
         spotify,
         {},
         "com.spotify.Client"},
        {110,
         1,
         "/snap/discord/1/Discord",
         {},
         "snap.discord.discord-0aaf5f5e-0000-4000-8000-123456789abc.scope",
         {},
         ""},

        {200, 1, "/opt/google/chrome/chrome", {}, "session-2.scope", {}, ""},
        {201,
         200,
         "/opt/google/chrome/chrome",
         {"/opt/google/chrome/chrome --type=zygote"},
         "session-2.scope",
         {},
         ""},
        {202, 201, "/opt/google/chrome/chrome", {}, "session-2.scope", {}, ""},
        {203,
         1,
         "/opt/google/chrome/chrome",
         {},
         "app-gnome-chrome\\x2dabc\\x2dDefault-203.scope",
         {},
         ""},
        {210, 1, "/usr/lib/firefox-esr/firefox-esr", {}, "session-2.scope", {}, ""},

        {300, 1, "/usr/lib/slack/slack", {}, inSlack, {}, ""},
        {301, 300, "/usr/lib/slack/slack", {}, inSlack, {}, ""},
        {302, 301, "/usr/bin/ffplay", {}, inSlack, {}, ""},
        {310, 301, "/usr/lib/firefox-esr/firefox-esr", {}, inSlack, byFirefox, ""},
        {311, 310, "/usr/lib/firefox-esr/firefox-esr", {}, inSlack, byFirefox, ""},

        {400, 1, "/usr/bin/konsole", {}, inKonsole, {}, ""},
        {401, 400, "/usr/bin/bash", {"/usr/bin/bash"}, inKonsole, {}, ""},
        {402, 401, "/usr/bin/mpv", {"mpv", "song"}, inKonsole, {}, ""},
        {403, 401, "/usr/bin/ffplay", {"ffplay", "song"}, inKonsole, {}, ""},
        {404, 401, "/usr/bin/pw-cat", {"pw-play", "song"}, inKonsole, {}, ""},
        {500, 1, "/usr/share/code/code", {}, inCode, {}, ""},
        {501,
         500,
         "/usr/bin/bash",
         {"/usr/bin/bash", "--init-file", "/usr/share/code/init.sh"},
         inCode,
         {},
         ""},
        {502, 501, "/usr/bin/ffplay", {}, inCode, {}, ""},
        {503, 500, "/usr/bin/ffplay", {}, inCode, {}, ""},

        {600, 1, "/usr/bin/dash", {"/bin/sh", "/usr/bin/tune"}, "session-2.scope", {}, ""},
        {601,
         600,
         "/usr/lib/jvm/bin/java",
         {"java", "-cp", "x", "-jar", "/usr/lib/engine.jar"},
         "session-2.scope",
         {},
         ""},
        {610,
         1,
         "/usr/bin/python3.11",
         {"python3", "-X", "dev", "/usr/share/mixtapes/main.py"},
         "session-2.scope",
         {},
         ""},
        {611, 1, "/usr/bin/python3.11", {"python3", "/home/me/beep.py"}, "session-2.scope", {}, ""},
        {612, 1, "/usr/bin/python3.11", {"python3"}, "session-2.scope", {}, ""},
        {620,
         1,
         "/usr/lib/wine/wine64-preloader",
         {"C:\\Games\\chess.exe", "-w"},
         "session-2.scope",
         {},
         ""},
        {630,
         1,
         "/usr/lib/electron25/electron",
         {"electron", "/usr/lib/tunebox/resources/app.asar"},
         "session-2.scope",
         {},
         ""},
        {631,
         630,
         "/usr/lib/electron25/electron",
         {"electron", "--type=utility"},
         "session-2.scope",
         {},
         ""},
        {640, 1, "/opt/acme/acme-bin", {}, "session-2.scope", {}, ""},

        {700, 1, "/usr/bin/steam", {}, "session-2.scope", {}, ""},
        {701, 700, "/home/me/games/doom", {}, "session-2.scope", {}, ""},
        {710, 1, "/usr/bin/gnome-shell", {}, "session-2.scope", {}, ""},
        {711, 710, "/usr/local/odd) S 7 (name", {}, "session-2.scope", {}, ""},
        {720, 1, "/usr/libexec/playerd", {}, "dbus-:1.9-org.example.Player@0.service", {}, ""},
        {730, 1, "/usr/libexec/voice", {}, "session-2.scope", {}, ""},
    };
    for (const auto& process : processes) {
        machine.start(process);
    }
}

struct Case {
    const char* what;
    std::int32_t pid;
    ClientHints hints;
    std::optional<std::string> bundleID;
    std::int32_t owner;
    std::optional<std::string> name;
};

ClientHints named(std::string name)
{
    ClientHints hints;
    hints.applicationName = std::move(name);
    return hints;
}

ClientHints identified(std::string id)
{
    ClientHints hints;
    hints.applicationID = std::move(id);
    return hints;
}

ClientHints electron(std::string binary)
{
    auto hints = named("Chromium");
    hints.processBinary = std::move(binary);
    hints.iconName = "chromium-browser";
    return hints;
}

ClientHints sandboxed(std::string id)
{
    auto hints = named("Chromium");
    hints.portalAppID = std::move(id);
    return hints;
}

const Case cases[] = {
    {"sandbox, helper", 103, {}, "com.spotify.Client", 102, "Spotify"},
    {"sandbox, told by the server",
     110,
     sandboxed("com.spotify.Client"),
     "com.spotify.Client",
     110,
     "Spotify"},
    {"snap", 110, {}, "com.hnc.Discord", 110, "Discord"},
    {"browser's audio service",
     202,
     named("Google Chrome"),
     "com.google.Chrome",
     200,
     "Google Chrome"},
    {"scope of a page in a browser", 203, {}, "com.google.Chrome", 203, "Google Chrome"},
    {"private folder, Debian's Firefox", 210, {}, "org.mozilla.firefox", 210, "Firefox ESR"},
    {"Electron", 301, electron("slack"), "com.tinyspeck.slackmacgap", 300, "Slack"},
    {"helper of another program in a scope", 302, {}, "com.tinyspeck.slackmacgap", 300, "Slack"},
    {"opened by an application, in its scope", 310, {}, "org.mozilla.firefox", 310, "Firefox ESR"},
    {"child of what was opened so", 311, {}, "org.mozilla.firefox", 310, "Firefox ESR"},
    {"the terminal itself", 400, {}, "org.kde.konsole", 400, "Konsole"},
    {"player in a terminal", 402, {}, "mpv", 402, "mpv Media Player"},
    {"unknown player in a terminal", 403, {}, "ffplay", 403, "ffplay"},
    {"one of a program's names", 404, {}, "pw-play", 404, "pw-play"},
    {"terminal inside an editor", 502, {}, "ffplay", 502, "ffplay"},
    {"the editor's own helper", 503, {}, "code", 500, "Code"},
    {"child of a wrapper script", 601, {}, "tune", 600, "Tune"},
    {"script with a common name", 610, named("main.py"), "mixtapes", 610, "Mixtapes"},
    {"script", 611, named("python3"), "beep.py", 611, "beep.py"},
    {"interpreter alone", 612, {}, "python", 612, "python"},
    {"Windows program", 620, named("Chess"), "chess.exe", 620, "Chess"},
    {"helper of a shared Electron", 631, electron("electron"), "tunebox", 630, "Tunebox"},
    {"real program beside its wrapper", 640, {}, "acme", 640, "Acme Recorder"},
    {"a launcher's game", 701, {}, "doom", 701, "doom"},
    {"child of the desktop shell", 711, {}, "odd) S 7 (name", 711, "odd) S 7 (name"},
    {"started by the bus", 720, {}, "org.example.Player", 720, "Spieler"},
    {"says its desktop entry",
     730,
     identified("org.example.Player.desktop"),
     "org.example.Player",
     730,
     "Spieler"},
    {"says what isn't installed", 730, identified("org.other.App"), "voice", 730, "voice"},
    {"behind a bridge", 730, named("PipeWire ALSA [warbler]"), "voice", 730, "warbler"},
    {"hidden pid",
     madeUp,
     sandboxed("org.signal.Signal"),
     "org.whispersystems.signal-desktop",
     madeUp,
     "Signal"},
    {"hidden pid, not installed",
     madeUp,
     sandboxed("org.foo.Bar"),
     "org.foo.Bar",
     madeUp,
     "org.foo.Bar"},
    {"hidden pid, binary",
     madeUp,
     electron("MSEdge"),
     "com.microsoft.edgemac",
     madeUp,
     "Microsoft Edge"},
    {"hidden pid, name of a library",
     madeUp,
     named("WEBRTC VoiceEngine"),
     std::nullopt,
     madeUp,
     std::nullopt},
    {"hidden pid, own name", madeUp, named(" Odd\n\x01Name\xff "), "OddName", madeUp, "OddName"},
    {"process gone", 999, named("Warbler"), "Warbler", 999, "Warbler"},
};

class AppIdentitiesTest : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        machine_ = std::make_unique<FakeMachine>();
        installApplications(*machine_);
        startProcesses(*machine_);
    }
    static void TearDownTestSuite() { machine_.reset(); }

    static std::unique_ptr<FakeMachine> machine_;
    std::shared_ptr<AppIdentities> identities_ =
        std::make_shared<AppIdentities>(machine_->config());
};

std::unique_ptr<FakeMachine> AppIdentitiesTest::machine_;

TEST_F(AppIdentitiesTest, FindTheApplicationBehindEveryKindOfProcess)
{
    for (const auto& each : cases) {
        SCOPED_TRACE(each.what);
        EXPECT_EQ(identities_->bundleID(each.pid, each.hints), each.bundleID);
        EXPECT_EQ(identities_->responsible(each.pid), each.owner);
        const auto running = identities_->runningApplications();
        ASSERT_EQ(running.size(), 1U) << "the application, and not its helper beside it";
        EXPECT_EQ(running.front().pid, each.owner);
        EXPECT_EQ(running.front().bundleID, each.bundleID);
        EXPECT_EQ(running.front().name, each.name);
        identities_->forget(each.pid);
    }
    EXPECT_TRUE(identities_->runningApplications().empty());
}

TEST_F(AppIdentitiesTest, ListRunningApplicationsByAppearanceAndCountTheirProcesses)
{
    const auto time = VirtualTime::create();
    XdgWorkspace workspace(identities_, time->makeQueue());
    int launches = 0;
    auto launched = workspace.onLaunch([&launches] { ++launches; });
    for (const std::int32_t pid : {402, 311, 202, 201, 310}) {
        static_cast<void>(identities_->bundleID(pid, {}));
    }
    EXPECT_EQ(launches, 0) << "told on the main queue";
    time->run();
    EXPECT_EQ(launches, 3);

    const auto pids = [&workspace] {
        std::vector<std::int32_t> list;
        for (const auto& application : workspace.runningApplications()) {
            list.push_back(application.pid);
        }
        return list;
    };
    EXPECT_THAT(pids(), testing::ElementsAre(402, 310, 200));
    identities_->forget(310);
    identities_->forget(202);
    EXPECT_THAT(pids(), testing::ElementsAre(402, 310, 200)) << "other processes of theirs remain";
    identities_->forget(311);
    EXPECT_THAT(pids(), testing::ElementsAre(402, 200));

    static_cast<void>(identities_->bundleID(640, {}));
    launched.cancel();
    time->run();
    EXPECT_EQ(launches, 3) << "nothing is told to who has left, though it was on its way";
}

TEST_F(AppIdentitiesTest, RememberAProcessUntilItIsForgotten)
{
    EXPECT_EQ(identities_->bundleID(730, identified("org.example.Player")), "org.example.Player");
    EXPECT_EQ(identities_->bundleID(730, {}), "org.example.Player");
    identities_->forget(730);
    EXPECT_EQ(identities_->bundleID(730, {}), "voice");

    EXPECT_EQ(identities_->bundleID(madeUp, {}), std::nullopt);
    EXPECT_EQ(identities_->bundleID(madeUp, named("Late")), "Late") << "nameless so far";
    EXPECT_EQ(identities_->runningApplications().size(), 2U);
}

TEST_F(AppIdentitiesTest, FindInstalledApplicationsUnderTheirCanonicalAndOwnNames)
{
    XdgWorkspace workspace(identities_, VirtualTime::create()->makeQueue());
    const auto folder = machine_->folder.path() / "usr/share/applications";
    const auto player = workspace.location("org.example.Player");
    ASSERT_TRUE(player);
    EXPECT_EQ(*player,
              (AppLocation{folder / "org.example.Player.desktop", "Spieler", {"player-icon", ""}}));
    EXPECT_EQ(workspace.describe(player->path), *player);

    const auto path = [&workspace](const char* id) {
        const auto found = workspace.location(id);
        return found ? std::filesystem::path(found->path).stem().string() : "";
    };
    EXPECT_EQ(path("com.tinyspeck.slackmacgap"), "slack");
    EXPECT_EQ(path("org.mozilla.firefox"), "firefox-esr");
    EXPECT_EQ(path("com.hnc.Discord"), "discord_discord");
    EXPECT_EQ(path("com.google.Chrome"), "google-chrome");
    EXPECT_EQ(path("com.vivaldi.Vivaldi"), "");
    EXPECT_EQ(path("beep.py"), "");
    EXPECT_EQ(workspace.location("acme")->icon, (AppIcon{"", "/opt/acme/icon.png"}));

    const auto unknown = workspace.describe("/nowhere/Thing.AppImage");
    EXPECT_EQ(unknown.displayName, "Thing");
    EXPECT_EQ(unknown.icon, AppIcon::generic());
}

TEST_F(AppIdentitiesTest, NoticeWhatIsInstalledLater)
{
    EXPECT_FALSE(identities_->location("late"));
    machine_->install("vendor/late", "Name=Late\nExec=late\n");
    const auto found = identities_->location("vendor-late");
    EXPECT_TRUE(found) << "in a folder that wasn't there before";
    std::filesystem::remove_all(machine_->folder.path() / "usr/share/applications/vendor");
    EXPECT_FALSE(identities_->location("vendor-late"));
}

TEST_F(AppIdentitiesTest, KnowParents)
{
    LinuxProcessLookup lookup(identities_);
    EXPECT_EQ(lookup.parent(711), 710) << "the name holds what looks like the end of it";
    EXPECT_EQ(lookup.parent(998), std::nullopt);
    EXPECT_EQ(lookup.parent(madeUp), std::nullopt);
    EXPECT_EQ(lookup.responsible(710), 0) << "never seen";

    AppIdentities real;
    EXPECT_EQ(real.parent(getpid()), getppid());
}

} // namespace
} // namespace fadewell
