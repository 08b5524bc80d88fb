#pragma once

#include "app/AppWindows.h"
#include "app/GatherDiagnostics.h"
#include "app/LoginItem.h"
#include "app/MixerModel.h"
#include "app/Workspace.h"
#include "audio/Tappability.h"
#include "base/SerialQueue.h"

#include <QDBusConnection>

#include <functional>
#include <memory>
#include <string>

namespace fadewell {

/// The mixer on the session bus: what the model shows, what it can be told, and a signal when
/// something changed. docs/dbus.md describes the interface. [main queue]
class MixerService final {
public:
    struct Parts {
        std::shared_ptr<MixerModel> model;
        std::shared_ptr<SerialQueue> mainQueue;
        std::shared_ptr<Workspace> workspace;
        std::shared_ptr<Tappability> tappability;   ///< may be absent
        std::shared_ptr<LoginItem> loginItem{};     ///< may be absent
        std::function<bool()> isCapturePermitted{}; ///< may be absent; asks anew
        std::string version;
        std::function<void()> quit;      ///< called on the main queue after the caller was answered
        std::function<void()> reopened;  ///< the program was started once more
        GatherDiagnostics diagnostics{}; ///< may be absent
        /// Opens a window; the token lets it take the keyboard. Empty where there is no display.
        std::function<void(AppWindow window, const QString& activationToken)> show{};
    };

    MixerService(QDBusConnection connection, Parts parts);
    ~MixerService();
    MixerService(const MixerService&) = delete;
    MixerService& operator=(const MixerService&) = delete;

    /// Puts the object on the bus; the name comes afterwards. False when that failed.
    [[nodiscard]] bool publish();

private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

} // namespace fadewell
