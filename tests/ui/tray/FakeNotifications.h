#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace fadewell {

/// The desktop's notification service, as far as Fadewell asks it. There while it lives.
class FakeNotifications final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    explicit FakeNotifications(QDBusConnection connection);
    ~FakeNotifications() override;

    static constexpr uint id = 7; ///< of every message
    QStringList shown;            ///< the summaries, in order

    /// Someone clicks on a message.
    void act(uint message);

public Q_SLOTS:
    Q_SCRIPTABLE uint Notify(const QString& program,
                             uint replaces,
                             const QString& icon,
                             const QString& summary,
                             const QString& body,
                             const QStringList& actions,
                             const QVariantMap& hints,
                             int timeout);

private:
    QDBusConnection connection_;
};

} // namespace fadewell
