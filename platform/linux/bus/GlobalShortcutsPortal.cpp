#include "platform/linux/bus/GlobalShortcutsPortal.h"

#include "platform/linux/bus/PortalRequest.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <utility>

namespace fadewell {
namespace {

constexpr const char* interface = "org.freedesktop.portal.GlobalShortcuts";
constexpr const char* sessionInterface = "org.freedesktop.portal.Session";
constexpr const char* applicationID = "app.fadewell.Fadewell";

/// A text although it is a path; some portals may send a path nevertheless.
QString sessionHandle(const QVariantMap& results)
{
    const auto handle = results.value("session_handle");
    return handle.metaType() == QMetaType::fromType<QDBusObjectPath>()
               ? handle.value<QDBusObjectPath>().path()
               : handle.toString();
}

} // namespace

GlobalShortcutsPortal::GlobalShortcutsPortal(QDBusConnection bus, Events events)
    : bus_(std::move(bus))
    , events_(std::move(events))
    , watcher_(PortalRequest::service, bus_, QDBusServiceWatcher::WatchForOwnerChange)
{
    registerPortalTypes();
    connect(&watcher_,
            &QDBusServiceWatcher::serviceOwnerChanged,
            this,
            [this](const auto&, const auto&, const QString& owner) { ownerChanged(owner); });
    const auto listen = [this](const char* signal, const char* slot) {
        bus_.connect(PortalRequest::service, PortalRequest::path, interface, signal, this, slot);
    };
    listen("Activated", SLOT(activated(QDBusMessage)));
    listen("Deactivated", SLOT(deactivated(QDBusMessage)));
    listen("ShortcutsChanged", SLOT(shortcutsChanged(QDBusMessage)));
    introduce();
    lookForShortcuts();
}

QDBusMessage GlobalShortcutsPortal::call(const char* method) const
{
    return QDBusMessage::createMethodCall(
        PortalRequest::service, PortalRequest::path, interface, method);
}

// Programs outside a sandbox say themselves who they are. Portals that don't know the call find it
// out in another way; the answer makes no difference.
void GlobalShortcutsPortal::introduce()
{
    auto message = QDBusMessage::createMethodCall(PortalRequest::service,
                                                  PortalRequest::path,
                                                  "org.freedesktop.host.portal.Registry",
                                                  "Register");
    message << applicationID << QVariantMap();
    bus_.asyncCall(message);
}

void GlobalShortcutsPortal::lookForShortcuts()
{
    auto message = QDBusMessage::createMethodCall(
        PortalRequest::service, PortalRequest::path, "org.freedesktop.DBus.Properties", "Get");
    message << interface << "version";
    auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(message), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        answer->deleteLater();
        setAvailable(!reply.isError() && reply.value().variant().toUInt() > 0);
    });
}

void GlobalShortcutsPortal::ownerChanged(const QString& newOwner)
{
    ++attempt_;
    session_.clear();
    setTriggers({});
    setAvailable(false);
    if (!newOwner.isEmpty()) {
        introduce();
        lookForShortcuts();
    }
}

void GlobalShortcutsPortal::setAvailable(bool isAvailable)
{
    if (std::exchange(isAvailable_, isAvailable) != isAvailable) {
        events_.availabilityChanged();
    }
}

void GlobalShortcutsPortal::setTriggers(std::map<std::string, std::string> triggers)
{
    if (triggers_ != triggers) {
        triggers_ = std::move(triggers);
        events_.triggersChanged();
    }
}

void GlobalShortcutsPortal::bind(PortalShortcuts shortcuts)
{
    closeSession();
    wanted_ = std::move(shortcuts);
    if (isAvailable_ && !wanted_.isEmpty()) {
        openSession();
    }
}

void GlobalShortcutsPortal::closeSession()
{
    ++attempt_;
    if (session_.isEmpty()) {
        return;
    }
    bus_.asyncCall(QDBusMessage::createMethodCall(
        PortalRequest::service, std::exchange(session_, {}), sessionInterface, "Close"));
    setTriggers({});
}

void GlobalShortcutsPortal::openSession()
{
    const QVariantMap options{{"session_handle_token", PortalRequest::newToken()}};
    PortalRequest::send(this,
                        bus_,
                        call("CreateSession"),
                        options,
                        [this, attempt = attempt_](
                            bool isGranted, const QVariantMap& results, const QString& problem) {
                            const auto session = sessionHandle(results);
                            if (attempt != attempt_) {
                                return;
                            }
                            if (isGranted && !session.isEmpty()) {
                                bindInSession(session, wanted_);
                            } else {
                                log_.notice("No keyboard shortcuts: {}", problem.toStdString());
                            }
                        });
}

void GlobalShortcutsPortal::bindInSession(const QString& session, const PortalShortcuts& shortcuts)
{
    session_ = session;
    bus_.connect(PortalRequest::service,
                 session,
                 sessionInterface,
                 "Closed",
                 this,
                 SLOT(sessionClosed(QDBusMessage)));
    auto message = call("BindShortcuts");
    message << QVariant::fromValue(QDBusObjectPath(session)) << QVariant::fromValue(shortcuts)
            << QString(); // No window of ours asks.
    PortalRequest::send(this,
                        bus_,
                        message,
                        {},
                        [this, attempt = attempt_](
                            bool isGranted, const QVariantMap& results, const QString& problem) {
                            if (attempt != attempt_) {
                                return;
                            }
                            if (isGranted) {
                                setTriggers(triggersOf(results.value("shortcuts")));
                            } else {
                                log_.notice("No keyboard shortcuts: {}", problem.toStdString());
                                closeSession();
                            }
                        });
}

bool GlobalShortcutsPortal::isOurs(const QDBusMessage& message) const
{
    const auto session = message.arguments().value(0).value<QDBusObjectPath>().path();
    return !session_.isEmpty() && session == session_;
}

void GlobalShortcutsPortal::fire(const QDBusMessage& message, bool isPressed)
{
    if (message.signature().startsWith("os") && isOurs(message)) {
        events_.fired(message.arguments()[1].toString().toStdString(), isPressed);
    }
}

void GlobalShortcutsPortal::shortcutsChanged(const QDBusMessage& message)
{
    if (isOurs(message)) {
        setTriggers(triggersOf(message.arguments().value(1)));
    }
}

void GlobalShortcutsPortal::sessionClosed(const QDBusMessage& message)
{
    if (message.path() == session_) {
        log_.notice("The desktop took the keyboard shortcuts away");
        ++attempt_;
        session_.clear();
        setTriggers({});
    }
}

} // namespace fadewell
