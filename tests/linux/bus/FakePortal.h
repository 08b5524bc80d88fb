#pragma once

#include "platform/linux/bus/PortalShortcut.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace fadewell {

/// A desktop portal as scripted: it grants what a test lets it grant and remembers what it was
/// asked for.
class FakePortal final : public QDBusVirtualObject {
public:
    explicit FakePortal(const QDBusConnection& bus);

    uint createAnswer = 0; ///< 0 grants, 1 is the user's refusal, 2 another
    uint bindAnswer = 0;
    bool hasShortcuts = true;
    std::map<QString, QString> assigned; ///< trigger descriptions, by identifier

    std::vector<std::string> calls; ///< members of all calls, in their order
    QString registeredID;
    PortalShortcuts bound;
    QString session; ///< of the newest session

    /// Takes the name, or gives it back.
    void start();
    void stop();
    void emitKey(bool isPressed, const QString& id, const QString& inSession);
    void emitChanged();
    void emitClosed();

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
    QString introspect(const QString& /*path*/) const override { return {}; }

private:
    [[nodiscard]] PortalShortcuts assignedShortcuts() const;
    void respond(const QDBusMessage& call, uint code, const QVariantMap& results);
    [[nodiscard]] QDBusMessage signal(const char* name) const;

    QDBusConnection bus_;
};

} // namespace fadewell
