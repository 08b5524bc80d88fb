#pragma once

#include "control/BusMethod.h"
#include "control/CallerCheck.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <string>
#include <vector>

namespace fadewell {

/// Puts a table of methods and properties on the bus, introspectable, for this user alone. [main
/// thread]
class BusObject final : public QDBusVirtualObject {
public:
    BusObject(QDBusConnection connection,
              std::vector<BusMethod> methods,
              std::vector<BusProperty> properties);

    /// Must happen before the service name is taken: whoever sees the name may call at once.
    [[nodiscard]] bool registerAt(const QString& path);

    /// Sends a signal of the interface, without arguments.
    void emitSignal(const char* name);

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    void answer(const QDBusMessage& message);
    void send(const QDBusMessage& message, const QDBusMessage& reply);
    void call(const QDBusMessage& message);
    [[nodiscard]] const BusMethod* methodOf(const QDBusMessage& message) const;
    [[nodiscard]] QDBusMessage property(const QDBusMessage& message) const;

    QDBusConnection connection_;
    std::vector<BusMethod> methods_;
    std::vector<BusProperty> properties_;
    QString path_;
    CallerCheck callers_;
};

} // namespace fadewell
