#include "tests/ui/tray/FakeNotifications.h"

#include <QDBusMessage>

#include <utility>

namespace fadewell {
namespace {

constexpr const char* name = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";

} // namespace

FakeNotifications::FakeNotifications(QDBusConnection connection)
    : connection_(std::move(connection))
{
    connection_.registerObject(path, this, QDBusConnection::ExportScriptableSlots);
    connection_.registerService(name);
}

FakeNotifications::~FakeNotifications()
{
    connection_.unregisterService(name);
    connection_.unregisterObject(path);
}

void FakeNotifications::act(uint message)
{
    auto signal = QDBusMessage::createSignal(path, name, "ActionInvoked");
    signal << message << "default";
    connection_.send(signal);
}

uint FakeNotifications::Notify(const QString& /*program*/,
                               uint /*replaces*/,
                               const QString& /*icon*/,
                               const QString& summary,
                               const QString& /*body*/,
                               const QStringList& /*actions*/,
                               const QVariantMap& /*hints*/,
                               int /*timeout*/)
{
    shown.append(summary);
    return id;
}

} // namespace fadewell
