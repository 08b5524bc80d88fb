#pragma once

#include "app/MixerModel.h"
#include "app/SystemInspection.h"
#include "app/Workspace.h"
#include "audio/Tappability.h"
#include "base/SerialQueue.h"
#include "base/UserDefaults.h"
#include "control/AppCatalog.h"

#include <functional>
#include <memory>
#include <string>

namespace fadewell {

struct DiagnosticsFacts;

/// Gathers what the running program knows into one text for somebody who looks for a fault. Lives
/// as long as the program, to know every app that its log may name. [main queue]
class Diagnostics final : public std::enable_shared_from_this<Diagnostics> {
public:
    struct Parts {
        std::shared_ptr<MixerModel> model;
        std::shared_ptr<SerialQueue> mainQueue;
        std::shared_ptr<Workspace> workspace;
        std::shared_ptr<Tappability> tappability; ///< may be absent
        std::shared_ptr<UserDefaults> defaults;
        std::shared_ptr<SystemInspection> inspection;
        std::string version;
        QueueFactory makeQueue; ///< for the queue on which the system is asked
    };

    [[nodiscard]] static std::shared_ptr<Diagnostics> create(Parts parts);

    /// As GatherDiagnostics.
    void gather(bool withNames, std::function<void(const std::string& text)> done);

private:
    explicit Diagnostics(Parts parts);

    [[nodiscard]] std::string textOf(DiagnosticsFacts facts, bool withNames);

    Parts parts_;
    AppCatalog catalog_;
    std::shared_ptr<SerialQueue> queue_; ///< absent until something is gathered
};

} // namespace fadewell
