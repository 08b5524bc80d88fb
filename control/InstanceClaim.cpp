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

bool InstanceClaim::reopenOther()
{
    constexpr int patience = 5000; // milliseconds; the other may be busy starting
    auto message =
        QDBusMessage::createMethodCall(bus::service, bus::path, bus::interface, "Reopen");
    message.setAutoStartService(false);
    const auto reply = connection_.call(message, QDBus::Block, patience);
    return reply.type() == QDBusMessage::ReplyMessage;
}

} // namespace fadewell
