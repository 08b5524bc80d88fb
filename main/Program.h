#pragma once

#include "base/Logger.h"
#include "base/SerialQueue.h"
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
    Program(Options options, TerminationSignals& termination);

    /// Needs a QCoreApplication; returns the exit status.
    [[nodiscard]] int run();

private:
    /// The exit status when this is not the instance to run.
    [[nodiscard]] std::optional<int> deferToOther();
    [[nodiscard]] std::optional<int> lockWithoutBus();
    [[nodiscard]] bool compose();
    [[nodiscard]] std::optional<int> goOnBus();
    [[nodiscard]] int tellOther();
    void launch();

    Options options_;
    TerminationSignals& termination_;
    Logger log_{"main"};
    QDBusConnection bus_;
    InstanceClaim claim_;
    std::unique_ptr<QLockFile> lock_; ///< only without a session bus
    std::shared_ptr<SerialQueue> mainQueue_;
    std::unique_ptr<Composition> composition_;
    std::unique_ptr<MixerService> service_;
};

} // namespace fadewell
