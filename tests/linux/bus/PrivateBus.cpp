#include "tests/linux/bus/PrivateBus.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>

namespace fadewell {

void PrivateBus::SetUp()
{
    ASSERT_FALSE(daemon_.address().isEmpty());
}

void PrivateBus::TearDown()
{
    for (const auto& name : connections_) {
        QDBusConnection::disconnectFromBus(QString::fromStdString(name));
    }
}

QDBusConnection PrivateBus::connect(const char* name)
{
    connections_.emplace_back(name);
    return QDBusConnection::connectToBus(daemon_.address(), name);
}

bool PrivateBus::waitUntil(const std::function<bool()>& holds)
{
    const QDeadlineTimer deadline(5000);
    while (!holds()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
}

} // namespace fadewell
