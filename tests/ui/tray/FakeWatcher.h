#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

namespace fadewell {

/// The desktop's tray, as far as it takes icons. There while it lives.
class FakeWatcher final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")

public:
    /// Refuses the first `refusals` icons.
    explicit FakeWatcher(QDBusConnection connection, int refusals = 0);
    ~FakeWatcher() override;

    QStringList items; ///< the names that it was told, in order

public Q_SLOTS:
    Q_SCRIPTABLE void RegisterStatusNotifierItem(const QString& service,
                                                 const QDBusMessage& message);

private:
    QDBusConnection connection_;
    int refusals_;
};

} // namespace fadewell
