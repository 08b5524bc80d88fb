// The login item of a sandbox, against a portal on a private bus that answers as it is told.

#include "platform/linux/portal/PortalLoginItem.h"

#include "app/LoginItem.h"
#include "base/MemoryUserDefaults.h"
#include "tests/support/BusDaemon.h"
#include "tests/support/CapturedLog.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

#include <gmock/gmock.h>

namespace fadewell {
namespace {

using enum LoginItemStatus;

class FakePortal final : public QDBusVirtualObject {
public:
    uint response = 0; ///< 0 answered, 1 closed by the person
    bool allows = true;
    QVariantMap asked;

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override
    {
        if (message.member() != "RequestBackground") {
            return false;
        }
        asked = qdbus_cast<QVariantMap>(message.arguments().value(1));
        const auto path = "/org/freedesktop/portal/desktop/request/" +
                          message.service().mid(1).replace('.', '_') + '/' +
                          asked.value("handle_token").toString();
        // The answer first, as a portal may that needs to ask nobody.
        auto answer =
            QDBusMessage::createSignal(path, "org.freedesktop.portal.Request", "Response");
        answer << response
               << QVariantMap{{"autostart", allows && asked.value("autostart").toBool()}};
        bus.send(answer);
        return bus.send(message.createReply(QVariant::fromValue(QDBusObjectPath(path))));
    }
};

class PortalLoginItemTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_FALSE(daemon_.address().isEmpty());
        item_ = std::make_unique<LoginItem>(std::make_shared<PortalLoginItem>(
            QDBusConnection::connectToBus(daemon_.address(), "program"), defaults_));
    }
    void TearDown() override
    {
        item_.reset();
        thread_.quit();
        thread_.wait();
        QDBusConnection::disconnectFromBus("program");
        QDBusConnection::disconnectFromBus("portal");
    }

    /// On a thread of its own, since the program waits for it to take a request.
    void openPortal()
    {
        auto bus = QDBusConnection::connectToBus(daemon_.address(), "portal");
        portal_.moveToThread(&thread_);
        thread_.start();
        ASSERT_TRUE(bus.registerVirtualObject("/org/freedesktop/portal/desktop", &portal_));
        ASSERT_TRUE(bus.registerService("org.freedesktop.portal.Desktop"));
        item_->refresh();
    }

    bool becomes(LoginItemStatus status) const
    {
        for (int i = 0; i < 400 && item_->status.get() != status; ++i) {
            QEventLoop loop;
            QTimer::singleShot(5, &loop, &QEventLoop::quit);
            loop.exec();
        }
        return item_->status.get() == status;
    }

    CapturedLog log_;
    BusDaemon daemon_;
    QThread thread_;
    FakePortal portal_;
    std::shared_ptr<MemoryUserDefaults> defaults_ = std::make_shared<MemoryUserDefaults>();
    std::unique_ptr<LoginItem> item_;
};

TEST_F(PortalLoginItemTest, ShowsWhatThePortalAnswered)
{
    EXPECT_EQ(item_->status.get(), notFound) << "no portal, no login item";
    item_->setEnabled(true);
    EXPECT_THAT(log_.take(),
                testing::ElementsAre(testing::StartsWith("login-item error: Login item change")));
    openPortal();
    EXPECT_EQ(item_->status.get(), notRegistered);

    item_->setEnabled(true);
    EXPECT_TRUE(becomes(enabled));
    EXPECT_EQ(portal_.asked.value("commandline").toStringList(),
              (QStringList{"fadewell", "--background"}));
    item_->setEnabled(false);
    EXPECT_TRUE(becomes(notRegistered));

    portal_.allows = false;
    item_->setEnabled(true);
    EXPECT_TRUE(becomes(requiresApproval));
    portal_.allows = true;
    portal_.response = 1;
    item_->setEnabled(true);
    EXPECT_FALSE(becomes(enabled)) << "who closes the question has allowed nothing";
    EXPECT_EQ(item_->status.get(), requiresApproval);
}

} // namespace
} // namespace fadewell
