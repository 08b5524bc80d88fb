#include "platform/linux/bus/OnScreenMessages.h"

#include "base/MemoryUserDefaults.h"
#include "tests/linux/bus/PrivateBus.h"
#include "tests/support/CapturedLog.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <gmock/gmock.h>

namespace fadewell {
namespace {

using testing::ElementsAre;

/// Notes "what it replaces: text", and answers only when it is told to.
class FakeNotifications final : public QDBusVirtualObject {
public:
    explicit FakeNotifications(QDBusConnection bus)
        : bus_(std::move(bus))
    {
        bus_.registerVirtualObject("/org/freedesktop/Notifications", this);
        bus_.registerService("org.freedesktop.Notifications");
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& /*bus*/) override
    {
        const auto arguments = message.arguments();
        shown.push_back(QString::number(arguments[1].toUInt()).toStdString() + ": " +
                        arguments[3].toString().toStdString());
        calls_.push_back(message);
        return true;
    }
    QString introspect(const QString& /*path*/) const override { return {}; }

    void answer(uint number)
    {
        bus_.send(calls_.back().createReply(number));
        calls_.pop_back();
    }

    std::vector<std::string> shown;

private:
    QDBusConnection bus_;
    QList<QDBusMessage> calls_;
};

using OnScreenMessagesTest = PrivateBus;

TEST_F(OnScreenMessagesTest, EachReplacesTheOneBeforeAndOnlyTheNewestIsShown)
{
    FakeNotifications desktop(connect("desktop"));
    const auto defaults = std::make_shared<MemoryUserDefaults>();
    OnScreenMessages messages(connect("program"), defaults);
    const auto isShown = [&](std::size_t count) {
        return waitUntil([&] { return desktop.shown.size() == count; });
    };
    messages.show("<b>Music</b> 90%");
    messages.show("Music 80%");
    messages.show("Music 70%");
    ASSERT_TRUE(isShown(1));
    desktop.answer(7);
    ASSERT_TRUE(isShown(2));
    desktop.answer(7);
    defaults->set(OnScreenMessages::enabledKey, false);
    messages.show("Not wanted");
    defaults->remove(OnScreenMessages::enabledKey);
    messages.show("Music 60%");
    ASSERT_TRUE(isShown(3));
    EXPECT_THAT(desktop.shown, ElementsAre("0: <b>Music</b> 90%", "7: Music 70%", "7: Music 60%"));
}

TEST_F(OnScreenMessagesTest, ADesktopWithoutNotificationsIsLoggedOnce)
{
    CapturedLog log;
    std::vector<std::string> lines;
    OnScreenMessages messages(connect("program"), std::make_shared<MemoryUserDefaults>());
    messages.show("Music 90%");
    messages.show("Music 80%");
    EXPECT_TRUE(waitUntil([&] { return !(lines = log.take()).empty(); }));
    messages.show("Music 70%");
    EXPECT_EQ(lines.size(), 1U);
}

} // namespace
} // namespace fadewell
