#include "platform/linux/bus/PortalRequest.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace fadewell {
namespace {

constexpr const char* requestInterface = "org.freedesktop.portal.Request";

} // namespace

QString PortalRequest::newToken()
{
    static int count = 0;
    return QString("fadewell%1").arg(++count);
}

PortalRequest::PortalRequest(QObject* parent, QDBusConnection bus, Answered answered)
    : QObject(parent)
    , bus_(std::move(bus))
    , answered_(std::move(answered))
{}

void PortalRequest::send(QObject* parent,
                         const QDBusConnection& bus,
                         QDBusMessage call,
                         QVariantMap options,
                         Answered answered)
{
    auto* request = new PortalRequest(parent, bus, std::move(answered));
    const auto token = newToken();
    options.insert("handle_token", token);
    call << options;
    // Before the call: the answer may come before the reply does.
    const auto sender = bus.baseService().mid(1).replace('.', '_');
    request->listen(QString("%1/request/%2/%3").arg(path, sender, token));
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), request);
    connect(watcher, &QDBusPendingCallWatcher::finished, request, [request, watcher] {
        const QDBusPendingReply<QDBusObjectPath> reply = *watcher;
        if (reply.isError()) {
            request->finish(false, {}, reply.error().message());
        } else {
            request->listen(reply.value().path()); // Old portals choose another path.
        }
    });
}

void PortalRequest::listen(const QString& requestPath)
{
    if (requestPath != listening_) {
        listening_ = requestPath;
        bus_.connect(service,
                     requestPath,
                     requestInterface,
                     "Response",
                     this,
                     SLOT(responded(QDBusMessage)));
    }
}

void PortalRequest::responded(const QDBusMessage& message)
{
    const auto arguments = message.arguments();
    if (message.signature() != "ua{sv}") {
        finish(false, {}, "The answer can't be read.");
        return;
    }
    const auto code = arguments[0].toUInt();
    finish(code == 0,
           qdbus_cast<QVariantMap>(arguments[1]),
           code == 1 ? "The user refused." : "The desktop refused.");
}

void PortalRequest::finish(bool isGranted, const QVariantMap& results, const QString& problem)
{
    if (const auto answered = std::exchange(answered_, nullptr)) {
        answered(isGranted, results, problem);
        deleteLater();
    }
}

} // namespace fadewell
