#include "tests/linux/bus/FakePortal.h"

#include <QDBusObjectPath>
#include <QDBusVariant>

namespace fadewell {
namespace {

constexpr const char* service = "org.freedesktop.portal.Desktop";
constexpr const char* path = "/org/freedesktop/portal/desktop";
constexpr const char* interface = "org.freedesktop.portal.GlobalShortcuts";

QString pathFor(const QDBusMessage& call, const char* kind, const QString& token)
{
    return QString("%1/%2/%3/%4").arg(path, kind, call.service().mid(1).replace('.', '_'), token);
}

QVariantMap optionsOf(const QDBusMessage& call)
{
    return qdbus_cast<QVariantMap>(call.arguments().constLast());
}

} // namespace

FakePortal::FakePortal(const QDBusConnection& bus)
    : bus_(bus)
{
    registerPortalTypes();
    bus_.registerVirtualObject(path, this, QDBusConnection::SubPath);
}

void FakePortal::start()
{
    bus_.registerService(service);
}

void FakePortal::stop()
{
    bus_.unregisterService(service);
}

PortalShortcuts FakePortal::assignedShortcuts() const
{
    PortalShortcuts list;
    for (const auto& [id, trigger] : assigned) {
        list.append({id, {{"trigger_description", trigger}}});
    }
    return list;
}

void FakePortal::respond(const QDBusMessage& call, uint code, const QVariantMap& results)
{
    const auto request = pathFor(call, "request", optionsOf(call).value("handle_token").toString());
    bus_.send(call.createReply(QVariant::fromValue(QDBusObjectPath(request))));
    auto response =
        QDBusMessage::createSignal(request, "org.freedesktop.portal.Request", "Response");
    response << code << results;
    bus_.send(response);
}

QDBusMessage FakePortal::signal(const char* name) const
{
    return QDBusMessage::createSignal(path, interface, name);
}

void FakePortal::emitKey(bool isPressed, const QString& id, const QString& inSession)
{
    auto message = signal(isPressed ? "Activated" : "Deactivated");
    message << QVariant::fromValue(QDBusObjectPath(inSession)) << id << qulonglong{5}
            << QVariantMap();
    bus_.send(message);
}

void FakePortal::emitChanged()
{
    auto message = signal("ShortcutsChanged");
    message << QVariant::fromValue(QDBusObjectPath(session))
            << QVariant::fromValue(assignedShortcuts());
    bus_.send(message);
}

void FakePortal::emitClosed()
{
    auto message = QDBusMessage::createSignal(session, "org.freedesktop.portal.Session", "Closed");
    message << QVariantMap();
    bus_.send(message);
}

bool FakePortal::handleMessage(const QDBusMessage& message, const QDBusConnection& /*connection*/)
{
    const auto member = message.member();
    calls.push_back(member.toStdString());
    if (member == "Register") {
        registeredID = message.arguments()[0].toString();
        bus_.send(message.createReply());
    } else if (member == "Get") {
        bus_.send(hasShortcuts
                      ? message.createReply(QVariant::fromValue(QDBusVariant(uint{1})))
                      : message.createErrorReply("org.freedesktop.DBus.Error.InvalidArgs", "No"));
    } else if (member == "CreateSession") {
        session = pathFor(
            message, "session", optionsOf(message).value("session_handle_token").toString());
        respond(message, createAnswer, {{"session_handle", session}});
    } else if (member == "BindShortcuts") {
        bound = qdbus_cast<PortalShortcuts>(message.arguments()[1].value<QDBusArgument>());
        respond(message, bindAnswer, {{"shortcuts", QVariant::fromValue(assignedShortcuts())}});
    } else if (member == "Close") {
        bus_.send(message.createReply());
    } else {
        return false;
    }
    return true;
}

} // namespace fadewell
