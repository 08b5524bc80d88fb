#pragma once

#include "base/Logger.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

namespace fadewell {

/// Keeps the icon registered with the desktop's tray, whenever one comes or is started again.
/// Nothing wakes up in between. [main thread]
class TrayHost final : public QObject {
    Q_OBJECT

public:
    enum class State {
        unknown, ///< the bus hasn't answered yet
        absent,  ///< no tray of this kind; one may come at any time
        shown    ///< a tray has taken the icon
    };

    /// `item` is the bus name of the icon.
    TrayHost(const QDBusConnection& connection, QString item);

    /// Looks for a tray; from here on `stateChanged` tells.
    void start();
    [[nodiscard]] State state() const { return state_; }

    static constexpr const char* watcher = "org.kde.StatusNotifierWatcher";
    static constexpr const char* watcherPath = "/StatusNotifierWatcher";

Q_SIGNALS:
    void stateChanged();

private:
    void registerItem();
    void set(State state);

    Logger log_{"tray"};
    QDBusConnection connection_;
    QString item_;
    QDBusServiceWatcher owners_;
    State state_ = State::unknown;
    int attempts_ = 0; ///< since the tray came
    int calls_ = 0;    ///< an answer to an earlier call is not the latest news
};

} // namespace fadewell
