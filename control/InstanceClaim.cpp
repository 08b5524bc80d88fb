#include "control/InstanceClaim.h"

#include "control/values/BusNames.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>

namespace fadewell {

bool InstanceClaim::isTaken() const
{
    const QDBusReply<bool> reply = connection_.interface()->isServiceRegistered(bus::service);
    return reply.isValid() && reply.value();
}

InstanceClaim::Outcome InstanceClaim::claim()
{
    using Interface = QDBusConnectionInterface;
    const auto reply = connection_.interface()->registerService(
        bus::service, Interface::DontQueueService, Interface::DontAllowReplacement);
    if (!reply.isValid()) {
        return Outcome::failed;
    }
    return reply.value() == Interface::ServiceRegistered ? Outcome::claimed : Outcome::taken;
}

QString InstanceClaim::askOther(Request request, const QString& activationToken)
{
    if (request == Request::none) {
        return {};
    }
    constexpr int patience = 5000; // milliseconds; the other may be busy starting
    auto message = QDBusMessage::createMethodCall(
        bus::service, bus::path, bus::interface, request == Request::show ? "Show" : "Reopen");
    if (request == Request::show) {
        message << activationToken;
    }
    message.setAutoStartService(false);
    const auto reply = connection_.call(message, QDBus::Block, patience);
    if (reply.type() == QDBusMessage::ReplyMessage) {
        return {};
    }
    return reply.errorName() == bus::error::notSupported
               ? reply.errorMessage()
               : "another instance runs but does not answer.";
}

} // namespace fadewell
