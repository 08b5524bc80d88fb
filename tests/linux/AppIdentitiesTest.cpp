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
constexpr const char* player = "org.example.Player";
constexpr const char* signalApp = "org.whispersystems.signal-desktop";

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

    const auto install = [&](const std::string& id,
                             const std::string& name,
                             const std::string& exec,
                             const std::string& more = "") {
        machine.install(id, "Name=" + name + "\nExec=" + exec + '\n' + more);
    };
    const auto chrome = machine.local("/opt/google/chrome/google-chrome");
    const auto stable = machine.local("/usr/bin/google-chrome-stable");
    install("firefox-esr", "Firefox ESR", "/usr/lib/firefox-esr/firefox-esr %u");
    install("google-chrome", "Google Chrome", stable + " %U", "Icon=google-chrome\n");
    install(
        "chrome-abc-Default", "Some Page", chrome + " --app-id=abc", "StartupWMClass=crx_abc\n");
    install("slack", "Slack", "env A=b slack %U", "StartupWMClass=Slack\n");
    install("acme", "Acme Recorder", "gamemoderun acme", "Icon=/opt/acme/icon.png\n");
    install("org.example.Player", "Player", "player %F", "Name[de]=Spieler\nIcon=player-icon\n");
    install("org.kde.konsole", "Konsole", "konsole", "Categories=Qt;System;TerminalEmulator;\n");
    install("code", "Code", "code %F");
    install("mpv", "mpv Media Player", "mpv -- %U", "Icon=mpv\n");
    install("steam", "Steam", "steam %U");
    install("game", "Some Game", "steam steam://rungameid/1");
    install("tune", "Tune", "tune");
    install("mixtapes", "Mixtapes", "mixtapes");
    install("tunebox", "Tunebox", "tunebox");
    install("discord_discord", "Discord", "/snap/bin/discord");
    const auto run = "/usr/bin/flatpak run com.spotify.Client";
    install("com.spotify.Client", "Spotify", run, "X-Flatpak=com.spotify.Client\n");
    install("org.gnome.Shell", "GNOME Shell", "gnome-shell", "NoDisplay=true\n");
    install("python3.11", "Python", "/usr/bin/python3.11", "NoDisplay=true\n");
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
    const std::string sandbox = "com.spotify.Client";
    const std::string discord = "snap.discord.discord-0aaf5f5e-0000-4000-8000-123456789abc.scope";
    const std::string page = "app-gnome-chrome\\x2dabc\\x2dDefault-203.scope";
    const std::string chrome = "/opt/google/chrome/chrome";
    const std::string firefox = "/usr/lib/firefox-esr/firefox-esr";
    const std::string slack = "/usr/lib/slack/slack";
    const std::string python = "/usr/bin/python3.11";
    const std::string electron = "/usr/lib/electron25/electron";
    const FakeMachine::Process processes[] = {
        {100, 1, "/usr/bin/bwrap", {}, spotify},
        {101, 100, "/usr/bin/bwrap", {}, spotify, sandbox},
        {102, 101, "/app/spotify", {}, spotify, sandbox},
        {103, 102, "/app/spotify", {"spotify", "--type=utility"}, spotify, sandbox},
        {110, 1, "/snap/discord/1/Discord", {}, discord},

        {200, 1, chrome},
        {201, 200, chrome, {chrome + " --type=zygote"}},
        {202, 201, chrome},
        {203, 1, chrome, {}, page},
        {210, 1, firefox},

        {300, 1, slack, {}, inSlack},
        {301, 300, slack, {}, inSlack},
        {302, 301, "/usr/bin/ffplay", {}, inSlack},
        {310, 301, firefox, {}, inSlack, "", byFirefox},
        {311, 310, firefox, {}, inSlack, "", byFirefox},

        {400, 1, "/usr/bin/konsole", {}, inKonsole},
        {401, 400, "/usr/bin/bash", {"/usr/bin/bash"}, inKonsole},
        {402, 401, "/usr/bin/mpv", {"mpv", "song"}, inKonsole},
        {403, 401, "/usr/bin/ffplay", {"ffplay", "song"}, inKonsole},
        {404, 401, "/usr/bin/pw-cat", {"pw-play", "song"}, inKonsole},
        {500, 1, "/usr/share/code/code", {}, inCode},
        {501, 500, "/usr/bin/bash", {"bash", "--init-file", "/usr/share/code/init.sh"}, inCode},
        {502, 501, "/usr/bin/ffplay", {}, inCode},
        {503, 500, "/usr/bin/ffplay", {}, inCode},

        {600, 1, "/usr/bin/dash", {"/bin/sh", "/usr/bin/tune"}},
        {601, 600, "/usr/lib/jvm/bin/java", {"java", "-cp", "x", "-jar", "/usr/lib/engine.jar"}},
        {610, 1, python, {"python3", "-X", "dev", "/usr/share/mixtapes/main.py"}},
        {611, 1, python, {"python3", "/home/me/beep.py"}},
        {612, 1, python, {"python3"}},
        {620, 1, "/usr/lib/wine/wine64-preloader", {"C:\\Games\\chess.exe", "-w"}},
        {630, 1, electron, {"electron", "/usr/lib/tunebox/resources/app.asar"}},
        {631, 630, electron, {"electron", "--type=utility"}},
        {640, 1, "/opt/acme/acme-bin"},

        {700, 1, "/usr/bin/steam"},
        {701, 700, "/home/me/games/doom"},
        {710, 1, "/usr/bin/gnome-shell"},
        {711, 710, "/usr/local/odd) S 7 (name"},
        {720, 1, "/usr/libexec/playerd", {}, "dbus-:1.9-org.example.Player@0.service"},
        {730, 1, "/usr/libexec/voice"},
    };
    for (const auto& process : processes) {
        machine.start(process);
    }
}

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

struct Case {
    const char* what;
    std::int32_t pid;
    std::int32_t owner;
    std::optional<std::string> bundleID;
    std::optional<std::string> name;
    ClientHints hints = {};
};

const Case cases[] = {
    {"sandbox, helper", 103, 102, "com.spotify.Client", "Spotify"},
    {"sandboxed", 110, 110, "com.spotify.Client", "Spotify", sandboxed("com.spotify.Client")},
    {"snap", 110, 110, "com.hnc.Discord", "Discord"},
    {"audio service", 202, 200, "com.google.Chrome", "Google Chrome", named("Google Chrome")},
    {"scope of a page in a browser", 203, 203, "com.google.Chrome", "Google Chrome"},
    {"private folder, Debian's Firefox", 210, 210, "org.mozilla.firefox", "Firefox ESR"},
    {"Electron", 301, 300, "com.tinyspeck.slackmacgap", "Slack", electron("slack")},
    {"helper of another program in a scope", 302, 300, "com.tinyspeck.slackmacgap", "Slack"},
    {"opened by an application, in its scope", 310, 310, "org.mozilla.firefox", "Firefox ESR"},
    {"child of what was opened so", 311, 310, "org.mozilla.firefox", "Firefox ESR"},
    {"the terminal itself", 400, 400, "org.kde.konsole", "Konsole"},
    {"player in a terminal", 402, 402, "mpv", "mpv Media Player"},
    {"unknown player in a terminal", 403, 403, "ffplay", "ffplay"},
    {"one of a program's names", 404, 404, "pw-play", "pw-play"},
    {"terminal inside an editor", 502, 502, "ffplay", "ffplay"},
    {"the editor's own helper", 503, 500, "code", "Code"},
    {"child of a wrapper script", 601, 600, "tune", "Tune"},
    {"script with a common name", 610, 610, "mixtapes", "Mixtapes", named("main.py")},
    {"script", 611, 611, "beep.py", "beep.py", named("python3")},
    {"interpreter alone", 612, 612, "python", "python"},
    {"Windows program", 620, 620, "chess.exe", "Chess", named("Chess")},
    {"helper of a shared Electron", 631, 630, "tunebox", "Tunebox", electron("electron")},
    {"real program beside its wrapper", 640, 640, "acme", "Acme Recorder"},
    {"a launcher's game", 701, 701, "doom", "doom"},
    {"child of the desktop shell", 711, 711, "odd) S 7 (name", "odd) S 7 (name"},
    {"started by the bus", 720, 720, "org.example.Player", "Spieler"},
    {"says its entry", 730, 730, player, "Spieler", identified("org.example.Player.desktop")},
    {"says what isn't installed", 730, 730, "voice", "voice", identified("org.other.App")},
    {"behind a bridge", 730, 730, "voice", "warbler", named("PipeWire ALSA [warbler]")},
    {"hidden pid", madeUp, madeUp, signalApp, "Signal", sandboxed("org.signal.Signal")},
    {"not installed", madeUp, madeUp, "org.foo.Bar", "org.foo.Bar", sandboxed("org.foo.Bar")},
    {"binary", madeUp, madeUp, "com.microsoft.edgemac", "Microsoft Edge", electron("MSEdge")},
    {"name of a library", madeUp, madeUp, {}, {}, named("WEBRTC VoiceEngine")},
    {"own name", madeUp, madeUp, "OddName", "OddName", named(" Odd\n\x01Name\xff ")},
    {"process gone", 999, 999, "Warbler", "Warbler", named("Warbler")},
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
    const auto installed = workspace.location("org.example.Player");
    ASSERT_TRUE(installed);
    EXPECT_EQ(*installed,
              (AppLocation{folder / "org.example.Player.desktop", "Spieler", {"player-icon", ""}}));
    EXPECT_EQ(workspace.describe(installed->path), *installed);

    const auto path = [&workspace](const char* id) {
        const auto found = workspace.location(id);
        return found ? std::filesystem::path(found->path).stem().string() : "";
    };
    EXPECT_EQ(path("com.tinyspeck.slackmacgap"), "slack");
    EXPECT_EQ(path("com.vivaldi.Vivaldi"), "");
    EXPECT_EQ(path("beep.py"), "");
    EXPECT_EQ(workspace.location("acme")->icon, (AppIcon{"", "/opt/acme/icon.png"}));

    const auto unknown = workspace.describe("/nowhere/Thing.AppImage");
    EXPECT_EQ(unknown.displayName, "Thing");
    EXPECT_EQ(unknown.icon, AppIcon::generic());
}

TEST_F(AppIdentitiesTest, TakeWhatAProcessCallsItsIconWhereNoneIsListed)
{
    const struct {
        std::int32_t pid;
        const char* name;
        std::optional<AppIcon> icon;
    } processes[] = {
        {402, "own", AppIcon{"mpv", {}}},
        {620, "own", AppIcon{"own", {}}},
        {620, "chromium-browser", std::nullopt}, // of every program on that engine
        {620, "", std::nullopt},
    };
    for (const auto& [pid, name, icon] : processes) {
        ClientHints hints;
        hints.iconName = name;
        static_cast<void>(identities_->bundleID(pid, hints));
        EXPECT_EQ(identities_->runningApplications().front().icon, icon) << name;
        identities_->forget(pid);
    }
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
