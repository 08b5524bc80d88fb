#include "control/BusObject.h"

#include "control/values/BusNames.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QPointer>
#include <QVariantMap>

#include <algorithm>
#include <unistd.h>
#include <utility>

namespace fadewell {
namespace {

constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";
constexpr const char* introspectableInterface = "org.freedesktop.DBus.Introspectable";

CallerCheck::Lookup busLookup(const QDBusConnection& connection)
{
    return [connection](const QString& caller, std::function<void(std::optional<uint>)> answer) {
        auto message = QDBusMessage::createMethodCall("org.freedesktop.DBus",
                                                      "/org/freedesktop/DBus",
                                                      "org.freedesktop.DBus",
                                                      "GetConnectionUnixUser");
        message << caller;
        auto* watcher = new QDBusPendingCallWatcher(connection.asyncCall(message));
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, answer] {
            const QDBusPendingReply<uint> reply = *watcher;
            answer(reply.isError() ? std::nullopt : std::optional<uint>(reply.value()));
            watcher->deleteLater();
        });
    };
}

QString signatureOf(const std::vector<BusMethod::Argument>& arguments)
{
    QString signature;
    for (const auto& argument : arguments) {
        signature += argument.type;
    }
    return signature;
}

QDBusMessage messageOf(const QDBusMessage& message, const BusReply& reply)
{
    const auto* const error = std::get_if<BusError>(&reply);
    return error ? message.createErrorReply(error->name, error->message)
                 : message.createReply(std::get<QVariantList>(reply));
}

QString argumentXml(const BusMethod::Argument& argument, const char* direction)
{
    return QString(R"(<arg name="%1" type="%2" direction="%3"/>)")
        .arg(argument.name, argument.type, direction);
}

} // namespace

BusObject::BusObject(QDBusConnection connection,
                     std::vector<BusMethod> methods,
                     std::vector<BusProperty> properties)
    : connection_(std::move(connection))
    , methods_(std::move(methods))
    , properties_(std::move(properties))
    , callers_(geteuid(), busLookup(connection_))
{}

bool BusObject::registerAt(const QString& path)
{
    path_ = path;
    return connection_.registerVirtualObject(path, this);
}

void BusObject::emitSignal(const char* name)
{
    connection_.send(QDBusMessage::createSignal(path_, bus::interface, name));
}

QString BusObject::introspect(const QString& /*path*/) const
{
    QString xml = QString("<interface name=\"%1\">\n").arg(bus::interface);
    for (const auto& method : methods_) {
        xml += QString("  <method name=\"%1\">\n").arg(method.name);
        for (const auto& argument : method.in) {
            xml += "    " + argumentXml(argument, "in") + '\n';
        }
        for (const auto& argument : method.out) {
            xml += "    " + argumentXml(argument, "out") + '\n';
        }
        xml += "  </method>\n";
    }
    for (const auto& property : properties_) {
        xml += QString("  <property name=\"%1\" type=\"%2\" access=\"read\">\n"
                       "    <annotation name=\"org.freedesktop.DBus.Property.EmitsChangedSignal\""
                       " value=\"false\"/>\n  </property>\n")
                   .arg(property.name, property.type);
    }
    return xml + QString("  <signal name=\"%1\"/>\n</interface>\n").arg(bus::changedSignal);
}

bool BusObject::handleMessage(const QDBusMessage& message, const QDBusConnection& /*connection*/)
{
    if (message.type() != QDBusMessage::MethodCallMessage ||
        message.interface() == introspectableInterface)
    {
        return false; // The library answers from introspect().
    }
    message.setDelayedReply(true);
    const QPointer<BusObject> self(this);
    callers_.check(message.service(), [self, message](bool isAllowed) {
        if (!self) {
            return;
        }
        if (isAllowed) {
            self->answer(message);
        } else {
            self->connection_.send(message.createErrorReply(
                bus::error::accessDenied, "Fadewell obeys only the user who runs it."));
        }
    });
    return true;
}

void BusObject::answer(const QDBusMessage& message)
{
    if (message.interface() == propertiesInterface) {
        send(message, property(message));
    } else if (message.interface().isEmpty() || message.interface() == bus::interface) {
        call(message);
    } else {
        send(message,
             message.createErrorReply(QDBusError::UnknownInterface,
                                      "No such interface: " + message.interface().left(128)));
    }
}

void BusObject::send(const QDBusMessage& message, const QDBusMessage& reply)
{
    if (message.isReplyRequired()) {
        connection_.send(reply);
    }
}

const BusMethod* BusObject::methodOf(const QDBusMessage& message) const
{
    const auto method = std::find_if(methods_.begin(), methods_.end(), [&](const auto& candidate) {
        return message.member() == candidate.name;
    });
    return method == methods_.end() ? nullptr : &*method;
}

void BusObject::call(const QDBusMessage& message)
{
    const auto* const method = methodOf(message);
    if (!method) {
        return send(message,
                    message.createErrorReply(QDBusError::UnknownMethod,
                                             "No such method: " + message.member().left(128)));
    }
    const auto expected = signatureOf(method->in);
    if (message.signature() != expected) {
        return send(message,
                    message.createErrorReply(
                        bus::error::invalidArguments,
                        QString("%1 takes arguments of type \"%2\".").arg(method->name, expected)));
    }
    if (method->handleLater) {
        method->handleLater(message.arguments(),
                            [self = QPointer(this), message](const auto& reply) {
                                if (self) {
                                    self->send(message, messageOf(message, reply));
                                }
                            });
    } else {
        send(message, messageOf(message, method->handle(message.arguments())));
    }
}

QDBusMessage BusObject::property(const QDBusMessage& message) const
{
    const auto arguments = message.arguments();
    if (message.member() == "GetAll" && message.signature() == "s") {
        QVariantMap all;
        for (const auto& property : properties_) {
            all.insert(property.name, property.read());
        }
        return message.createReply(QVariant(all));
    }
    if (message.member() == "Get" && message.signature() == "ss") {
        for (const auto& property : properties_) {
            if (arguments[1].toString() == property.name) {
                return message.createReply(QVariant::fromValue(QDBusVariant(property.read())));
            }
        }
        return message.createErrorReply(QDBusError::UnknownProperty, "No such property.");
    }
    if (message.member() == "Set") {
        return message.createErrorReply(QDBusError::PropertyReadOnly,
                                        "Properties are read-only here.");
    }
    return message.createErrorReply(QDBusError::UnknownMethod, "No such method.");
}

} // namespace fadewell
