#pragma once

#include "base/Logger.h"
#include "base/SerialQueue.h"
#include "base/Timer.h"
#include "base/UserDefaults.h"
#include "ui/tray/DesktopNotification.h"
#include "ui/tray/Tray.h"

#include <QObject>

#include <functional>
#include <memory>

namespace fadewell {

/// Tells once, ever, that there is no tray for the icon, and how the mixer opens all the same.
/// [main queue]
class MissingTrayNotice final : public QObject {
public:
    struct Parts {
        std::shared_ptr<SerialQueue> mainQueue;
        std::shared_ptr<UserDefaults> defaults;
        QDBusConnection bus;
        std::function<void()> openMixer;
    };

    /// Watches `tray`, which has to outlive this.
    MissingTrayNotice(const Tray& tray, Parts parts);

    /// Set once it has been told.
    static constexpr const char* toldKey = "hasToldMissingTray";

private:
    void follow();
    void tell();

    Logger log_{"tray"};
    const Tray& tray_;
    Parts parts_;
    DesktopNotification notification_;
    Timer patience_; ///< runs while the tray is absent
};

} // namespace fadewell
