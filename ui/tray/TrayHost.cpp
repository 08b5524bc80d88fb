#include "ui/tray/TrayHost.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QTimer>

#include <chrono>
#include <utility>

namespace fadewell {

TrayHost::TrayHost(const QDBusConnection& connection, QString item)
    : connection_(connection)
    , item_(std::move(item))
    , owners_(watcher, connection_, QDBusServiceWatcher::WatchForOwnerChange)
{
    connect(&owners_,
            &QDBusServiceWatcher::serviceOwnerChanged,
            this,
            [this](const QString& /*name*/, const QString& /*before*/, const QString& owner) {
                attempts_ = 0;
                if (owner.isEmpty()) {
                    ++calls_;
                    set(State::absent);
                } else {
                    registerItem();
                }
            });
}

void TrayHost::start()
{
    registerItem();
}

void TrayHost::registerItem()
{
    auto message =
        QDBusMessage::createMethodCall(watcher, watcherPath, watcher, "RegisterStatusNotifierItem");
    message << item_;
    message.setAutoStartService(false);
    auto* pending = new QDBusPendingCallWatcher(connection_.asyncCall(message), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending, call = ++calls_] {
        pending->deleteLater();
        const QDBusPendingReply<> reply = *pending;
        if (call != calls_) {
            return;
        }
        if (!reply.isError()) {
            set(State::shown);
            return;
        }
        set(State::absent);
        // Without a tray there is nobody to answer; its coming tries again.
        using namespace std::chrono_literals;
        constexpr int mostAttempts = 3; // a tray may take the name before it listens
        const auto error = reply.error();
        const bool isNobodyThere = error.type() == QDBusError::ServiceUnknown ||
                                   error.name() == "org.freedesktop.DBus.Error.NameHasNoOwner";
        if (isNobodyThere) {
            return;
        }
        log_.info("The tray refused the icon: {}", error.message().toStdString());
        if (++attempts_ < mostAttempts) {
            QTimer::singleShot(1s, this, [this, call] {
                if (call == calls_) {
                    registerItem();
                }
            });
        }
    });
}

void TrayHost::set(State state)
{
    if (std::exchange(state_, state) != state) {
        Q_EMIT stateChanged();
    }
}

} // namespace fadewell
