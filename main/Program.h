#pragma once

#include "app/WindowsParts.h"
#include "base/Logger.h"
#include "base/SerialQueue.h"
#include "control/Diagnostics.h"
#include "control/InstanceClaim.h"
#include "control/MixerService.h"
#include "main/Composition.h"
#include "main/Options.h"
#include "main/TerminationSignals.h"

#include <QDBusConnection>
#include <QLockFile>

#include <memory>
#include <optional>

namespace fadewell {

/// One run of fadewell, from the start to the exit status. [main thread]
class Program final {
public:
    /// `heartbeat` may be absent: nobody watches then. `makeWindows` is empty without a display.
    Program(Options options,
            TerminationSignals& termination,
            std::shared_ptr<Heartbeat> heartbeat,
            WindowsFactory makeWindows = {});

    /// Needs a QCoreApplication; returns the exit status.
    [[nodiscard]] int run();

private:
    /// The exit status when this is not the instance to run.
    [[nodiscard]] std::optional<int> deferToOther();
    [[nodiscard]] std::optional<int> lockWithoutBus();
    [[nodiscard]] bool compose();
    [[nodiscard]] std::optional<int> goOnBus();
    [[nodiscard]] int tellOther();
    [[nodiscard]] MixerService::Parts serviceParts();
    void makeDiagnostics(const QueueFactory& makeQueue);
    void makeWindows();
    void showWindow(AppWindow window, const QString& activationToken);
    void launch();

    Options options_;
    TerminationSignals& termination_;
    std::shared_ptr<Heartbeat> heartbeat_;
    Logger log_{"main"};
    QDBusConnection bus_;
    InstanceClaim claim_;
    std::unique_ptr<QLockFile> lock_; ///< only without a session bus
    std::shared_ptr<SerialQueue> mainQueue_;
    std::unique_ptr<Composition> composition_;
    std::shared_ptr<Diagnostics> diagnostics_;
    std::unique_ptr<MixerService> service_;
    WindowsFactory windowsFactory_;
    std::shared_ptr<AppWindows> windows_; ///< absent without a display
};

} // namespace fadewell
