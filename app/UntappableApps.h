#pragma once

#include "app/AppDirectory.h"
#include "app/UntappableApp.h"
#include "app/Workspace.h"
#include "audio/Tappability.h"

#include <memory>
#include <vector>

namespace fadewell {

/// Which apps play sound that can't be controlled on this platform, and why. [main queue]
class UntappableApps final {
public:
    /// `tappability` may be absent: there is none such.
    UntappableApps(std::shared_ptr<Workspace> workspace, std::shared_ptr<Tappability> tappability);

    /// As of now; nothing tells when it changes.
    [[nodiscard]] std::vector<UntappableApp> list();

private:
    std::shared_ptr<Workspace> workspace_;
    std::shared_ptr<Tappability> tappability_;
    AppDirectory directory_;
};

} // namespace fadewell
