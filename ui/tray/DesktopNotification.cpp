#include "ui/tray/DesktopNotification.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>
#include <QVariantMap>

#include <utility>

namespace fadewell {
namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";

} // namespace

DesktopNotification::DesktopNotification(const QDBusConnection& connection, Content content)
    : connection_(connection)
    , content_(std::move(content))
{}

void DesktopNotification::show(std::function<void(bool isShown)> done)
{
    connection_.connect(
        service, path, service, "ActionInvoked", this, SLOT(actionInvoked(uint, QString)));
    constexpr int desktopsOwnTime = -1;
    auto message = QDBusMessage::createMethodCall(service, path, service, "Notify");
    message << "Fadewell" << uint(0) << "app.fadewell.Fadewell" << content_.summary
            << content_.body.toHtmlEscaped() << QStringList{"default", content_.action}
            << QVariantMap{{"desktop-entry", "app.fadewell.Fadewell"}} << desktopsOwnTime;
    auto* pending = new QDBusPendingCallWatcher(connection_.asyncCall(message), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending, done] {
        const QDBusPendingReply<uint> reply = *pending;
        pending->deleteLater();
        id_ = reply.isError() ? 0 : reply.value();
        done(!reply.isError());
    });
}

void DesktopNotification::actionInvoked(uint id, const QString& /*action*/)
{
    if (id != 0 && id == id_) {
        content_.act();
    }
}

} // namespace fadewell
