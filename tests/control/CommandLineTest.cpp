#include "tests/control/BusFixture.h"

#include <QProcessEnvironment>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <string>

namespace fadewell {
namespace {

using testing::HasSubstr;

struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
};

/// fadewellctl as people start it, against the service on the private bus.
class CommandLineTest : public BusFixture {
protected:
    void start(QProcess& process, const QStringList& arguments)
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DBUS_SESSION_BUS_ADDRESS", address);
        environment.insert("LC_ALL", "en_US.UTF-8");
        process.setProcessEnvironment(environment);
        process.start(FADEWELLCTL, arguments);
    }

    Outcome ctl(const QStringList& arguments)
    {
        QProcess process;
        start(process, arguments);
        waitUntil([&] { return process.state() == QProcess::NotRunning; });
        return {process.exitCode(),
                process.readAllStandardOutput().toStdString(),
                process.readAllStandardError().toStdString()};
    }
};

TEST_F(CommandLineTest, ListsApps)
{
    model->setVolume(0.4, firefox);
    const auto json = nlohmann::json::parse(ctl({"apps", "--json"}).out);
    ASSERT_EQ(json.size(), 2U);
    EXPECT_EQ(json[0]["id"], firefox);
    EXPECT_EQ(json[0]["volume"], 0.4);
    EXPECT_EQ(json[0]["outputDeviceUID"], nullptr);
    EXPECT_EQ(json[1]["isPlaying"], false);
    EXPECT_THAT(ctl({"apps"}).out, HasSubstr("Firefox  yes         40%  no     system"));
    EXPECT_EQ(nlohmann::json::parse(ctl({"--json", "outputs"}).out)[1]["isDefault"], true);
}

TEST_F(CommandLineTest, CommandsChangeTheModel)
{
    workspace->front = {.pid = 77, .bundleID = firefox, .name = "Firefox"};
    const struct {
        QStringList arguments;
        const char* out;
    } cases[] = {
        {{"volume", "fire", "40%"}, "Firefox: 40%, output system, playing\n"},
        {{"volume", "firefox", "-10%"}, "Firefox: 30%, output system, playing\n"},
        {{"volume", "firefox", "+0.2"}, "Firefox: 50%, output system, playing\n"},
        {{"volume", "firefox"}, "Firefox: 50%, output system, playing\n"},
        {{"mute", "MPV", "on"}, "mpv: 100% (muted), output system\n"},
        {{"mute", "mpv", "toggle"}, "mpv: 100%, output system\n"},
        {{"output", "mpv", "head"}, "mpv: 100%, output Headset\n"},
        {{"output", "mpv", "system"}, "mpv: 100%, output system\n"},
        {{"lower-frontmost"}, "Firefox: 40%, output system, playing\n"},
        {{"raise-frontmost"}, "Firefox: 50%, output system, playing\n"},
        {{"forget", "firefox"}, "Firefox: forgotten\n"},
        {{"forget", "--all"}, "Forgotten: 0 apps\n"},
        {{"microphone", "off"}, "Microphone Mic: off (muted), volume 50%\n"},
        {{"microphone", "toggle"}, "Microphone Mic: on, volume 50%\n"},
        {{"microphone", "volume", "+20%"}, "Microphone Mic: on, volume 70%\n"},
        {{"call-mode", "on"}, "Call mode: on (chosen by you)\n"},
        {{"call-mode", "auto"}, "Call mode: off\n"},
        {{"call-settings", "--automatic", "off", "--level", "30%", "--exclude", "firefox"},
         "Automatic: off\nLevel: 30%\nExcluded: org.mozilla.firefox\n"},
        {{"call-settings", "--include", "firefox"}, "Automatic: off\nLevel: 30%\nExcluded: none\n"},
        {{"toggle-microphone"}, "Microphone Mic: off (muted), volume 70%\n"},
        {{"toggle-call-mode"}, "Call mode: on (chosen by you)\n"},
        {{"permission"}, "Fadewell may change other programs' sound.\n"},
        {{"complete", "outputs"}, "alsa:usb\nalsa:pci\n"},
    };
    for (const auto& [arguments, out] : cases) {
        const auto run = ctl(arguments);
        EXPECT_EQ(run.out, out) << arguments.join(' ').toStdString() << run.err;
        EXPECT_EQ(run.status, 0);
    }
}

TEST_F(CommandLineTest, TellsWhoUsesTheMicrophoneAndWhatIsForbidden)
{
    const auto since = std::chrono::sys_seconds(std::chrono::seconds(1'700'000'000));
    model->microphoneUserNames.set({"Zoom"});
    model->microphoneUsers.set({{"us.zoom.xos", "Zoom", since}});
    const auto json = nlohmann::json::parse(ctl({"microphone", "--json"}).out);
    EXPECT_EQ(json["uses"][0]["id"], "us.zoom.xos");
    EXPECT_EQ(json["uses"][0]["since"], 1'700'000'000);
    EXPECT_THAT(ctl({"microphone"}).out, HasSubstr("\n  Zoom since "));
    isPermitted = false;
    EXPECT_EQ(ctl({"permission", "--json"}).out, "{\n  \"isAllowed\": false\n}\n");
}

TEST_F(CommandLineTest, ExplainsWhatWentWrong)
{
    model->apps.set({row("a.music", "Music"), row("b.music", "Music"), row("evil", "\x1b[2Jevil")});
    const struct {
        QStringList arguments;
        int status;
        const char* err;
    } cases[] = {
        {{"volume", "musik", "40%"}, 4, "Did you mean:\n  Music  (a.music)"},
        {{"volume", "evjl"}, 4, "\\x1b[2Jevil  (evil)"},
        {{"volume", "music"}, 5, "\n  Music  (a.music)\n  Music  (b.music)"},
        {{"volume", "a.music", "140%"}, 2, "0% to 100%"},
        {{"volume", "a.music", "forty"}, 2, "0% to 100%"},
        {{"output", "a.music", "nowhere"}, 1, "no output \"nowhere\""},
        {{"forget"}, 2, "APP"},
        {{"login-item", "on"}, 1, "can't be chosen here"},
        {{"microphone", "on", "70%"}, 2, "microphone volume"},
        {{"call-settings", "--level", "-5%"}, 2, "0% to 100%"},
    };
    for (const auto& [arguments, status, err] : cases) {
        const auto run = ctl(arguments);
        EXPECT_EQ(run.status, status) << arguments.join(' ').toStdString();
        EXPECT_THAT(run.err, HasSubstr(err));
        EXPECT_EQ(run.out, "");
    }
    service.reset();
    QDBusConnection::disconnectFromBus("service");
    const auto run = ctl({"apps"});
    EXPECT_EQ(run.status, 3);
    EXPECT_THAT(run.err, HasSubstr("fadewell --headless"));
}

TEST_F(CommandLineTest, DiagnosticsComeFromTheProgramAndElseSayWhatIsMissing)
{
    EXPECT_EQ(ctl({"diagnostics"}).out, "names\n");
    EXPECT_EQ(ctl({"diagnostics", "--without-names"}).out, "no names\n");
    EXPECT_TRUE(call("Diagnostics", {"yes"}).type() == QDBusMessage::ErrorMessage);
    service.reset();
    QDBusConnection::disconnectFromBus("service");
    const auto alone = ctl({"diagnostics", "--json"});
    EXPECT_EQ(alone.status, 0);
    const auto json = nlohmann::json::parse(alone.out);
    EXPECT_EQ(json["isComplete"], false);
    for (const char* const part :
         {"Kernel",
          "Missing: the running program has its last lines",
          "Missing: the running program has them. Fadewell is not running"})
    {
        EXPECT_THAT(json["text"].get<std::string>(), HasSubstr(part));
    }
}

TEST_F(CommandLineTest, WatchPrintsRealChangesOnce)
{
    QProcess watcher;
    start(watcher, {"watch"});
    std::string text;
    const auto waitFor = [&](const std::string& end) {
        waitUntil([&] {
            text += watcher.readAllStandardOutput().toStdString();
            return text.ends_with(end);
        });
        return std::exchange(text, "");
    };
    EXPECT_THAT(waitFor("Call mode: off\n"), HasSubstr("Firefox"));
    model->setVolume(0.2, "mpv");
    model->setVolume(0.4, "mpv");
    queue->async([&] { // Taken back in the same turn: nothing to tell.
        model->setMuted(true, "mpv");
        model->setMuted(false, "mpv");
    });
    EXPECT_EQ(waitFor("mpv: 40%, output system\n"), "mpv: 40%, output system\n");
    model->setCallModeActive(true);
    model->apps.set({});
    EXPECT_EQ(waitFor("(chosen by you)\n"),
              "Firefox: gone\nmpv: gone\nCall mode: on (chosen by you)\n");
    service.reset();
    QDBusConnection::disconnectFromBus("service");
    waitUntil([&] { return watcher.state() == QProcess::NotRunning; });
    EXPECT_EQ(watcher.exitCode(), 3);
}

} // namespace
} // namespace fadewell
