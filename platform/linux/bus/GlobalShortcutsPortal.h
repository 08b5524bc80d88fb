#pragma once

#include "base/Logger.h"
#include "platform/linux/bus/PortalShortcut.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

#include <functional>
#include <map>
#include <string>

namespace fadewell {

/// The desktop portal's shortcuts, over a connection of their own. [main thread]
class GlobalShortcutsPortal final : public QObject {
    Q_OBJECT

public:
    struct Events {
        std::function<void()> availabilityChanged;
        std::function<void()> triggersChanged;
        std::function<void(const std::string& id, bool isPressed)> fired;
    };

    /// Tells the portal who this is, and looks whether it offers shortcuts; later, too, when it
    /// starts or starts again. `bus` must be used for nothing else before.
    GlobalShortcutsPortal(QDBusConnection bus, Events events);

    [[nodiscard]] bool isAvailable() const { return isAvailable_; }
    /// The combinations as the desktop shows them, by name.
    [[nodiscard]] const std::map<std::string, std::string>& triggers() const { return triggers_; }

    /// Asks for these, in place of what was asked for before. The desktop may ask the user.
    void bind(PortalShortcuts shortcuts);

private slots:
    void activated(const QDBusMessage& message) { fire(message, true); }
    void deactivated(const QDBusMessage& message) { fire(message, false); }
    void shortcutsChanged(const QDBusMessage& message);
    void sessionClosed(const QDBusMessage& message);

private:
    [[nodiscard]] QDBusMessage call(const char* method) const;
    void introduce();
    void lookForShortcuts();
    void ownerChanged(const QString& newOwner);
    void setAvailable(bool isAvailable);
    void setTriggers(std::map<std::string, std::string> triggers);
    void openSession();
    void bindInSession(const QString& session, const PortalShortcuts& shortcuts);
    void closeSession();
    void fire(const QDBusMessage& message, bool isPressed);
    /// Whether a signal that begins with a session's path is about the current one.
    [[nodiscard]] bool isOurs(const QDBusMessage& message) const;

    const Logger log_{"shortcuts"};
    QDBusConnection bus_;
    const Events events_;
    QDBusServiceWatcher watcher_;
    bool isAvailable_ = false;
    PortalShortcuts wanted_;
    int attempt_ = 0; ///< answers to earlier attempts come too late
    QString session_; ///< empty: none
    std::map<std::string, std::string> triggers_;
};

} // namespace fadewell
