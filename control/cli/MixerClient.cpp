#include "control/cli/MixerClient.h"

#include "control/cli/Failure.h"
#include "control/values/BusNames.h"
#include "control/values/PlainText.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusReply>

#include <map>
#include <string>
#include <utility>

namespace fadewell::cli {
namespace {

constexpr int patience = 10000; // milliseconds

Failure notRunning()
{
    return {ExitCode::notRunning, "Fadewell is not running. Start it with: fadewell --headless"};
}

Failure failureOf(const QDBusMessage& reply)
{
    static const std::map<QString, ExitCode> codes{
        {bus::error::unknownApp, ExitCode::unknownApp},
        {bus::error::outOfRange, ExitCode::usage},
        {bus::error::invalidArguments, ExitCode::usage},
    };
    const QString name = reply.errorName();
    if (name == QDBusError::errorString(QDBusError::ServiceUnknown) ||
        name == "org.freedesktop.DBus.Error.NameHasNoOwner")
    {
        return notRunning();
    }
    if (name == QDBusError::errorString(QDBusError::NoReply)) {
        return {ExitCode::failure, "Fadewell does not answer."};
    }
    const auto found = codes.find(name);
    return {found == codes.end() ? ExitCode::failure : found->second,
            plainText(reply.errorMessage().toStdString())};
}

} // namespace

MixerClient::MixerClient(QDBusConnection connection)
    : connection_(std::move(connection))
{
    if (!connection_.isConnected()) {
        throw Failure(ExitCode::notRunning,
                      "There is no session bus to reach Fadewell on: " +
                          connection_.lastError().message().toStdString());
    }
    registerBusTypes();
    if (!isRunning()) {
        throw notRunning();
    }
}

bool MixerClient::isRunning() const
{
    const QDBusReply<bool> reply = connection_.interface()->isServiceRegistered(bus::service);
    return reply.isValid() && reply.value();
}

QVariantList MixerClient::call(const char* method, const QVariantList& arguments) const
{
    auto message = QDBusMessage::createMethodCall(bus::service, bus::path, bus::interface, method);
    message.setAutoStartService(false);
    message.setArguments(arguments);
    const auto reply = connection_.call(message, QDBus::Block, patience);
    if (reply.type() == QDBusMessage::ReplyMessage) {
        return reply.arguments();
    }
    throw failureOf(reply);
}

MixerState MixerClient::state() const
{
    return {list<AppEntry>("Apps"),
            list<OutputEntry>("Outputs"),
            entry<MicrophoneEntry>("Microphone"),
            entry<CallModeEntry>("CallMode")};
}

BusMap MixerClient::map(const QVariantList& reply)
{
    return qdbus_cast<BusMap>(reply.value(0));
}

BusMapList MixerClient::maps(const QVariantList& reply)
{
    return qdbus_cast<BusMapList>(reply.value(0));
}

} // namespace fadewell::cli
