#include "platform/linux/portal/PortalLoginItem.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QStringList>
#include <QVariantMap>

#include <utility>

namespace fadewell {
namespace {

constexpr const char* portal = "org.freedesktop.portal.Desktop";
constexpr const char* requestInterface = "org.freedesktop.portal.Request";
constexpr int patience = 2000; // milliseconds, for the portal to take the request

} // namespace

PortalLoginItem::PortalLoginItem(QDBusConnection bus, std::shared_ptr<UserDefaults> defaults)
    : bus_(std::move(bus))
    , defaults_(std::move(defaults))
{}

LoginItemStatus PortalLoginItem::status()
{
    if (const auto isAllowed = defaults_->get<bool>(answerKey)) {
        return *isAllowed ? LoginItemStatus::enabled : LoginItemStatus::requiresApproval;
    }
    const auto* const names = bus_.interface();
    const bool isThere = names && (names->isServiceRegistered(portal) ||
                                   names->activatableServiceNames().value().contains(portal));
    return isThere ? LoginItemStatus::notRegistered : LoginItemStatus::notFound;
}

std::optional<std::string> PortalLoginItem::request(bool wantsStart)
{
    // The answer may come before the call returns, at a path that can be told beforehand.
    const auto token = QString("fadewell%1").arg(++requests_);
    auto sender = bus_.baseService().mid(1);
    listenTo("/org/freedesktop/portal/desktop/request/" + sender.replace('.', '_') + '/' + token);
    auto message = QDBusMessage::createMethodCall(portal,
                                                  "/org/freedesktop/portal/desktop",
                                                  "org.freedesktop.portal.Background",
                                                  "RequestBackground");
    message << QString()
            << QVariantMap{{"handle_token", token},
                           {"reason", "Fadewell keeps each app at the volume that you chose."},
                           {"autostart", wantsStart},
                           {"commandline", QStringList{"fadewell", "--background"}},
                           {"dbus-activatable", false}};
    wantsStart_ = wantsStart;
    const QDBusReply<QDBusObjectPath> reply = bus_.call(message, QDBus::Block, patience);
    if (!reply.isValid()) {
        listenTo({});
        return reply.error().message().toStdString();
    }
    if (!request_.isEmpty() && reply.value().path() != request_) {
        listenTo(reply.value().path()); // A portal from before the paths were agreed on.
    }
    return std::nullopt;
}

void PortalLoginItem::listenTo(const QString& path)
{
    const auto slot = SLOT(responded(QDBusMessage));
    if (!request_.isEmpty()) {
        bus_.disconnect(portal, request_, requestInterface, "Response", this, slot);
    }
    request_ = path;
    if (!request_.isEmpty()) {
        bus_.connect(portal, request_, requestInterface, "Response", this, slot);
    }
}

void PortalLoginItem::responded(const QDBusMessage& message)
{
    listenTo({});
    const auto arguments = message.arguments();
    // Whoever closes the question has not answered it.
    if (arguments.value(0, 2U).toUInt() == 0) {
        const auto results = qdbus_cast<QVariantMap>(arguments.value(1));
        if (wantsStart_) {
            defaults_->set(answerKey, results.value("autostart").toBool());
        } else {
            defaults_->remove(answerKey);
        }
    }
    if (changed_) {
        changed_();
    }
}

} // namespace fadewell
