#include "ui/tray/Tray.h"

#include "base/VirtualTime.h"
#include "tests/control/BusFixture.h"
#include "tests/support/FixedWindows.h"
#include "tests/ui/tray/FakeNotifications.h"
#include "tests/ui/tray/FakeWatcher.h"
#include "ui/tray/MissingTrayNotice.h"
#include "ui/tray/bus/MenuLayout.h"
#include "ui/tray/bus/TrayToolTip.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDBusVariant>

#include <memory>
#include <optional>

namespace fadewell {
namespace {

constexpr const char* itemInterface = "org.kde.StatusNotifierItem";
constexpr const char* menuInterface = "com.canonical.dbusmenu";

/// Counts what an icon tells its hosts.
class Signals final : public QObject {
    Q_OBJECT

public:
    QStringList names;

public Q_SLOTS:
    void note(const QDBusMessage& message) { names.append(message.member()); }
};

class TrayTest : public BusFixture {
protected:
    void SetUp() override
    {
        BusFixture::SetUp();
        windows.offered = {AppWindow::panel, AppWindow::about};
        tray.emplace(TrayActions::Parts{.model = model,
                                        .windows = windows,
                                        .togglePanel =
                                            [this](const auto& icon) {
                                                ++toggles;
                                                anchor = icon;
                                            },
                                        .quit =
                                            [this] {
                                                ++quits;
                                            }},
                     Tray::Options{.busAddress = address});
        workspace->front = RunningApplication{.pid = 99, .bundleID = firefox, .name = "Firefox"};
    }
    void TearDown() override
    {
        watcher.reset();
        tray.reset();
        QDBusConnection::disconnectFromBus("host");
        BusFixture::TearDown();
    }

    /// A tray comes and takes the icon.
    void startHost(int refusals = 0)
    {
        watcher.emplace(connect("host"), refusals);
        waitUntil([this] { return tray->presence() == Tray::Presence::shown; });
        item = watcher->items.back();
    }
    void stopHost()
    {
        watcher.reset();
        waitUntil([this] { return tray->presence() == Tray::Presence::absent; });
    }

    /// What a host's call answers.
    QDBusMessage ask(const char* interface, const char* member, const QVariantList& arguments)
    {
        const char* path =
            interface == menuInterface ? StatusNotifierItem::menuPath : StatusNotifierItem::path;
        auto message = QDBusMessage::createMethodCall(item, path, interface, member);
        message.setArguments(arguments);
        const auto pending = connect("host").asyncCall(message);
        waitUntil([&] { return pending.isFinished(); });
        EXPECT_EQ(pending.reply().type(), QDBusMessage::ReplyMessage)
            << member << ": " << pending.reply().errorMessage().toStdString();
        return pending.reply();
    }
    QVariantMap properties()
    {
        const auto reply = callOther("org.freedesktop.DBus.Properties", "GetAll", {itemInterface});
        return qdbus_cast<QVariantMap>(reply.arguments().value(0));
    }
    QDBusMessage callOther(const char* interface, const char* member, const QVariantList& arguments)
    {
        return ask(interface, member, arguments);
    }

    FixedWindows windows;
    std::optional<Tray> tray;
    std::optional<FakeWatcher> watcher;
    QString item;
    std::optional<QRect> anchor;
    int toggles = 0;
};

TEST_F(TrayTest, IsRegisteredWheneverATrayComesOrIsStartedAgain)
{
    tray->setInserted(true);
    waitUntil([this] { return tray->presence() == Tray::Presence::absent; });
    startHost();
    EXPECT_EQ(watcher->items.size(), 1) << "once";
    stopHost();
    startHost();
    EXPECT_EQ(watcher->items.size(), 1);
    stopHost();
    startHost(1);
    EXPECT_EQ(watcher->items.size(), 2) << "a tray that took its name too early is asked again";

    EXPECT_TRUE(connect("host").interface()->isServiceRegistered(item));
    tray->setInserted(false);
    EXPECT_EQ(tray->presence(), Tray::Presence::unknown) << "not wanted is not missing";
    waitUntil([this] { return !connect("host").interface()->isServiceRegistered(item); });
    tray->setInserted(true);
    waitUntil([this] { return tray->presence() == Tray::Presence::shown; });
}

TEST_F(TrayTest, ClicksAndTheWheelReachTheModel)
{
    tray->setInserted(true);
    startHost();
    ask(itemInterface, "Activate", {1165, 13});
    EXPECT_EQ(anchor, QRect(1165, 13, 1, 1));
    ask(itemInterface, "Activate", {9, 14});
    EXPECT_EQ(anchor, std::nullopt) << "a place within the icon says nothing";
    ask(itemInterface, "ContextMenu", {1165, 13});
    EXPECT_EQ(toggles, 3);

    ask(itemInterface, "SecondaryActivate", {0, 0});
    EXPECT_TRUE(model->microphone.get().isMuted);
    ask(itemInterface, "SecondaryActivate", {0, 0});
    model->microphone.set({"Mic", std::nullopt, false, false});
    ask(itemInterface, "SecondaryActivate", {0, 0});
    EXPECT_FALSE(model->microphone.get().isMuted) << "one that can't be muted stays on";

    ask(itemInterface, "Scroll", {-120, "vertical"});
    ask(itemInterface, "Scroll", {-120, "horizontal"});
    EXPECT_DOUBLE_EQ(model->settings(firefox).volume(), 0.9);
    EXPECT_EQ(workspace->announcements.size(), 1U);
}

TEST_F(TrayTest, TellsHostsOfChangesAndOfNothingElse)
{
    tray->setInserted(true);
    startHost();
    Signals heard;
    for (const char* interface : {itemInterface, menuInterface}) {
        ASSERT_TRUE(connect("host").connect(
            item, QString(), interface, QString(), &heard, SLOT(note(QDBusMessage))));
    }
    properties(); // The subscriptions above have reached the bus.
    EXPECT_EQ(properties()["Title"], "Fadewell");

    model->microphone.set({"Another", 0.1, false, true});
    model->microphoneUserNames.set({"Zoom"});
    properties();
    EXPECT_TRUE(heard.names.isEmpty()) << heard.names.join(' ').toStdString();

    model->isCallModeActive.set(true);
    waitUntil([&] { return heard.names.size() >= 4; });
    heard.names.sort();
    EXPECT_EQ(heard.names,
              QStringList({"ItemsPropertiesUpdated", "NewIcon", "NewTitle", "NewToolTip"}));
    const auto now = properties();
    EXPECT_EQ(now["Title"], "Fadewell, Call Mode On");
    EXPECT_EQ(now["IconName"], "") << "a tray that doesn't paint it takes the pixels";
    tray->setLook({TrayIcons::Ground::light, true});
    EXPECT_EQ(properties()["IconName"], "app.fadewell.Fadewell-call-mode-symbolic");
    EXPECT_EQ(qdbus_cast<TrayToolTip>(now["ToolTip"]).title, "Fadewell, Call Mode On");
    EXPECT_EQ(qdbus_cast<TrayPixmaps>(now["IconPixmap"]).size(), 5);
}

TEST_F(TrayTest, TheMenuWorks)
{
    tray->setInserted(true);
    startHost();
    const auto reply = ask(menuInterface, "GetLayout", {0, -1, QStringList()});
    const auto layout = qdbus_cast<MenuLayout>(reply.arguments().value(1));
    ASSERT_EQ(layout.children.size(), 8U);
    EXPECT_EQ(layout.children[0].properties["label"], "Open Mixer");
    EXPECT_EQ(layout.children[2].properties["toggle-state"], 1);
    const auto click = [&](std::size_t place, const char* event = "clicked") {
        const auto data = QVariant::fromValue(QDBusVariant(QString()));
        ask(menuInterface, "Event", {layout.children[place].id, event, data, 0U});
    };
    click(0, "hovered");
    click(0);
    click(5);
    EXPECT_EQ(windows.shown, (std::vector{AppWindow::panel, AppWindow::about}));
    click(2);
    EXPECT_TRUE(model->microphone.get().isMuted);
    const auto state = ask(menuInterface, "GetProperty", {layout.children[2].id, "toggle-state"});
    EXPECT_EQ(state.arguments().value(0).value<QDBusVariant>().variant(), 0);
    click(3);
    EXPECT_TRUE(model->isCallModeActive.get());
    click(4); // a separator
    click(7);
    EXPECT_EQ(quits, 1);
    ask(menuInterface, "Event", {4711, "clicked", QVariant::fromValue(QDBusVariant(0)), 0U});
    const auto unknown = ask(menuInterface, "GetLayout", {4711, 1, QStringList()});
    EXPECT_TRUE(qdbus_cast<MenuLayout>(unknown.arguments().value(1)).children.empty());
}

TEST_F(TrayTest, TellsOnceThatThereIsNoTray)
{
    FakeNotifications desktop(connect("host"));
    const auto time = VirtualTime::create();
    int opened = 0;
    const auto makeNotice = [&] {
        return std::make_unique<MissingTrayNotice>(
            *tray,
            MissingTrayNotice::Parts{.mainQueue = time->makeQueue(),
                                     .defaults = defaults,
                                     .bus = connect("caller"),
                                     .openMixer = [&] {
                                         ++opened;
                                     }});
    };
    const auto isTold = [this] {
        return defaults->get<bool>(MissingTrayNotice::toldKey).value_or(false);
    };
    auto notice = makeNotice();
    tray->setInserted(true);
    waitUntil([this] { return tray->presence() == Tray::Presence::absent; });
    time->advance(15);
    startHost(); // Late, as at login.
    time->advance(60);
    stopHost();
    EXPECT_TRUE(desktop.shown.isEmpty());
    time->advance(21);
    waitUntil(isTold);
    EXPECT_EQ(desktop.shown, QStringList("Fadewell is running"));
    desktop.act(desktop.id + 1); // Another program's.
    desktop.act(desktop.id);
    waitUntil([&] { return opened == 1; });

    notice = makeNotice(); // The next start.
    startHost();
    stopHost();
    time->advance(60);
    call("Version"); // Whatever was sent has arrived by now.
    EXPECT_EQ(desktop.shown.size(), 1);
}

} // namespace
} // namespace fadewell

#include "TrayTest.moc"
