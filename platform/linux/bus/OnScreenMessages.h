#pragma once

#include "base/UserDefaults.h"

#include <QDBusConnection>
#include <QObject>

#include <memory>
#include <string_view>

namespace fadewell {

/// Short messages on the screen, shown by the desktop's notifications: each takes the place of the
/// one before, and none stays in a list. [main thread]
class OnScreenMessages final : public QObject {
public:
    /// Boolean; the user may turn the messages off. Absent means on.
    static constexpr const char* enabledKey = "showsOnScreenMessages";

    OnScreenMessages(QDBusConnection bus, std::shared_ptr<UserDefaults> defaults);

    /// Does nothing while they are turned off; a desktop without notifications is logged once.
    void show(std::string_view text);

private:
    QDBusConnection bus_;
    std::shared_ptr<UserDefaults> defaults_;
    uint last_ = 0;          ///< the message that the next one replaces
    bool isPending_ = false; ///< its number is still to come
    QString waiting_;        ///< the newest text meanwhile
    bool hasFailed_ = false;
};

} // namespace fadewell
