#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <functional>

namespace fadewell {

/// One message on the screen, by the desktop's notification service, with one thing to do about it.
/// [main thread]
class DesktopNotification final : public QObject {
    Q_OBJECT

public:
    struct Content {
        QString summary;
        QString body; ///< without markup
        QString action;
        std::function<void()> act; ///< on a click on the message or on the action
    };

    DesktopNotification(const QDBusConnection& connection, Content content);

    /// Asks for it to be shown; `done` hears whether it was.
    void show(std::function<void(bool isShown)> done);

private Q_SLOTS:
    void actionInvoked(uint id, const QString& action);

private:
    QDBusConnection connection_;
    Content content_;
    uint id_ = 0; ///< 0: not shown
};

} // namespace fadewell
