#pragma once

#include "app/SystemInspection.h"
#include "base/Finding.h"
#include "base/RecentLog.h"
#include "control/values/AppEntry.h"
#include "control/values/NamedItem.h"

#include <string>
#include <vector>

namespace fadewell {

/// Everything that goes into the text for somebody who looks for a fault.
struct DiagnosticsFacts {
    SystemInspection::Versions versions{}; ///< of Fadewell first
    std::vector<Finding> findings{};
    std::vector<SoundNode> nodes{};
    SystemInspection::StoredSettings settings{};
    SystemInspection::Owner owner{};

    std::vector<AppEntry> rows{};
    std::vector<NamedItem> knownApps{};
    std::vector<RecentLog::Entry> log{};

    // Why a part is missing, for people; empty where it is there.
    std::string nodesProblem{};
    std::string rowsProblem{};
    std::string logProblem{};

    /// What can be found out from outside of the program, too. `version` is Fadewell's and says
    /// whether it runs.
    [[nodiscard]] static DiagnosticsFacts of(SystemInspection& inspection,
                                             const std::string& version);
};

} // namespace fadewell
