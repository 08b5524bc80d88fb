#include "control/values/BusValues.h"
#include "tests/control/BusFixture.h"

#include <QDBusArgument>
#include <QDBusVariant>

#include <cmath>
#include <gmock/gmock.h>
#include <limits>

namespace fadewell {
namespace {

std::vector<AppEntry> appsOf(const QDBusMessage& reply)
{
    return fromBusList<AppEntry>(qdbus_cast<BusMapList>(reply.arguments().value(0)));
}

TEST_F(BusFixture, ListsRowsAndWhatCanNotBeTapped)
{
    const auto plays = [this](std::uint32_t id, std::int32_t pid, const char* bundleID, auto why) {
        workspace->running.emplace_back().pid = pid;
        workspace->running.back().bundleID = bundleID;
        UntappableProcess process;
        process.process.id = id;
        process.process.pid = pid;
        process.process.isRunningOutput = true;
        process.reason = why;
        tappability->processes.push_back(process);
    };
    plays(70, 7, "jack.app", UntappableReason::passthrough);
    plays(80, 8, firefox, UntappableReason::pinned);
    const auto apps = appsOf(call("Apps"));
    ASSERT_EQ(apps.size(), 3U) << "an app with a row isn't listed a second time";
    EXPECT_EQ(apps[0].id, firefox);
    EXPECT_TRUE(apps[0].isPlaying);
    EXPECT_EQ(apps[0].bundleID, firefox);
    EXPECT_EQ(apps[2].id, "jack.app");
    EXPECT_FALSE(apps[2].isTappable);
    EXPECT_EQ(apps[2].untappableReason, "passthrough");
    EXPECT_EQ(apps[2].pids, std::vector<std::int32_t>{7});
    EXPECT_EQ(call("SetVolume", {"jack.app", 0.5}).errorName(), bus::error::notSupported);
}

TEST_F(BusFixture, CommandsStartFromWhatIsThere)
{
    EXPECT_TRUE(call("ToggleMuted", {firefox}).arguments()[0].toBool());
    EXPECT_DOUBLE_EQ(call("ChangeVolume", {firefox, 0.1}).arguments()[0].toDouble(), 0.1)
        << "a muted app starts from 0";
    EXPECT_FALSE(model->settings(firefox).isMuted);
    call("SetOutput", {firefox, "alsa:usb"});
    EXPECT_EQ(appsOf(call("Apps")).front().outputDeviceUID, "alsa:usb");
    EXPECT_EQ(model->settings(firefox).outputDeviceName, "Headset");
    call("ToggleMicrophone");
    call("SetMicrophoneMuted", {true});
    EXPECT_TRUE(model->microphone.get().isMuted) << "muting twice is no toggle";
    call("SetCallSettings", {BusMap{{"level", 0.3}, {"exclude", QStringList{"us.zoom.xos"}}}});
    EXPECT_EQ(model->callModeSettings.get(), CallModeSettings(true, 0.3, {"us.zoom.xos"}));
}

TEST_F(BusFixture, AddressesAppsThatDoNotRun)
{
    model->setVolume(0.5, "remembered.app");
    EXPECT_EQ(call("SetMuted", {"remembered.app", true}).type(), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(model->settings("remembered.app").isMuted);
    model->apps.set({}); // mpv was shown, and now isn't any more
    EXPECT_EQ(call("SetVolume", {"mpv", 0.2}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(model->settings("mpv").volume(), 0.2);
    EXPECT_EQ(appsOf(call("Remembered")).size(), 2U);
}

TEST_F(BusFixture, RefusesBadArgumentsAndChangesNothing)
{
    const double nan = std::nan("");
    const QString huge(2000, 'x');
    const struct {
        const char* member;
        QVariantList arguments;
        const char* error;
    } cases[] = {
        {"SetVolume", {firefox, nan}, bus::error::outOfRange},
        {"SetVolume", {firefox, 1.1}, bus::error::outOfRange},
        {"ChangeVolume",
         {firefox, -std::numeric_limits<double>::infinity()},
         bus::error::outOfRange},
        {"SetVolume", {"no.such.app", 0.5}, bus::error::unknownApp},
        {"SetVolume", {huge, 0.5}, bus::error::invalidArguments},
        {"SetVolume", {firefox, "0.5"}, bus::error::invalidArguments},
        {"SetVolume", {firefox}, bus::error::invalidArguments},
        {"SetOutput", {firefox, "alsa:gone"}, bus::error::unknownOutput},
        {"SetMicrophoneVolume", {nan}, bus::error::outOfRange},
        {"SetCallMode", {"maybe"}, bus::error::invalidArguments},
        {"SetCallSettings", {BusMap{{"level", nan}}}, bus::error::outOfRange},
        {"SetCallSettings",
         {BusMap{{"isAutomatic", false}, {"level", "x"}}},
         bus::error::invalidArguments},
        {"SetCallSettings", {BusMap{{"exclude", QStringList{"mpv"}}}}, bus::error::unknownApp},
        {"SetCallSettings", {BusMap{{"unheard", 1}}}, bus::error::invalidArguments},
        {"NoSuchMethod", {}, "org.freedesktop.DBus.Error.UnknownMethod"},
    };
    for (const auto& [member, arguments, error] : cases) {
        EXPECT_EQ(call(member, arguments).errorName().toStdString(), error) << member;
    }
    EXPECT_THAT(call("SetVolume", {"mpw", 0.5}).errorMessage().toStdString(),
                testing::HasSubstr("Did you mean mpv"));
    EXPECT_TRUE(model->rememberedApps.get().empty());
    EXPECT_EQ(model->callModeSettings.get(), CallModeSettings());
    model->microphone.set({});
    EXPECT_EQ(call("ToggleMicrophone").errorName(), bus::error::notSupported);
    EXPECT_EQ(call("RaiseFrontmost").errorName(), bus::error::notSupported);
    EXPECT_EQ(call("SetMicrophoneMuted", {true}).errorName(), bus::error::notSupported);
}

TEST_F(BusFixture, DescribesItselfAndItsProperties)
{
    const auto xml = callInterface("org.freedesktop.DBus.Introspectable", "Introspect")
                         .arguments()
                         .value(0)
                         .toString()
                         .toStdString();
    for (const char* part : {R"(<method name="SetVolume">)",
                             R"(<arg name="volume" type="d" direction="in"/>)",
                             R"(<arg name="apps" type="aa{sv}" direction="out"/>)",
                             R"(<signal name="Changed"/>)",
                             R"(<property name="Version" type="s" access="read">)"})
    {
        EXPECT_THAT(xml, testing::HasSubstr(part));
    }
    const char* properties = "org.freedesktop.DBus.Properties";
    const auto version = callInterface(properties, "Get", {bus::interface, "Version"});
    EXPECT_EQ(version.arguments().value(0).value<QDBusVariant>().variant().toString(), "1.2.3");
    const auto all = callInterface(properties, "GetAll", {bus::interface});
    EXPECT_EQ(qdbus_cast<BusMap>(all.arguments().value(0)).value("NeedsAudioPermission"), false);
    EXPECT_TRUE(
        callInterface("some.other.Interface", "Apps").errorName().endsWith("UnknownInterface"));
}

TEST_F(BusFixture, KeepsOneInstanceAndHearsOfTheSecond)
{
    InstanceClaim second(connect("second"));
    EXPECT_TRUE(second.isTaken());
    EXPECT_EQ(second.claim(), InstanceClaim::Outcome::taken);
    call("Reopen");
    call("Quit");
    waitUntil([&] { return quits > 0; });
    EXPECT_EQ(reopens, 1);
    EXPECT_EQ(quits, 1);
    EXPECT_EQ(call("Show", {"token"}).errorName(), bus::error::notSupported) << "no display";
}

TEST_F(BusFixture, ShowsTheMixerWhereThereIsADisplay)
{
    std::string shownWith = "not shown";
    MixerService::Parts parts;
    parts.model = model;
    parts.mainQueue = queue;
    parts.workspace = workspace;
    parts.show = [&](AppWindow window, const QString& token) {
        shownWith = (window == AppWindow::settings ? "settings " : "") + token.toStdString();
    };
    service.reset(); // Another takes its place on the same bus.
    MixerService withWindows(connect("service"), std::move(parts));
    ASSERT_TRUE(withWindows.publish());
    EXPECT_EQ(call("Show", {QString(2000, 'x')}).errorName(), bus::error::invalidArguments);
    EXPECT_EQ(call("Show", {"token"}).type(), QDBusMessage::ReplyMessage);
    waitUntil([&] { return shownWith == "token"; });
    EXPECT_EQ(call("ShowSettings", {"other"}).type(), QDBusMessage::ReplyMessage);
    waitUntil([&] { return shownWith == "settings other"; });
    EXPECT_EQ(reopens, 0);
}

} // namespace
} // namespace fadewell
