#pragma once

#include "app/MixerModel.h"
#include "app/SystemInspection.h"
#include "app/Workspace.h"
#include "audio/Tappability.h"
#include "base/UserDefaults.h"
#include "control/AppCatalog.h"

#include <memory>
#include <string>

namespace fadewell {

/// Gathers what the running program knows into one text for somebody who looks for a fault. Lives
/// as long as the program, to know every app that its log may name. [main queue]
class Diagnostics final {
public:
    struct Parts {
        std::shared_ptr<MixerModel> model;
        std::shared_ptr<Workspace> workspace;
        std::shared_ptr<Tappability> tappability; ///< may be absent
        std::shared_ptr<UserDefaults> defaults;
        std::shared_ptr<SystemInspection> inspection;
        std::string version;
    };

    explicit Diagnostics(Parts parts);

    /// Takes up to some seconds where a part of the system hangs.
    [[nodiscard]] std::string text(bool withNames);

private:
    Parts parts_;
    AppCatalog catalog_;
};

} // namespace fadewell
