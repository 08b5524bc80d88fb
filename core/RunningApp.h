#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace fadewell {

/// One running application, as far as grouping needs to know it.
struct RunningApp {
    std::int32_t pid = 0;
    std::optional<std::string> bundleID;
    bool isBackgroundOnly = false; ///< has no user interface of its own

    bool operator==(const RunningApp&) const = default;
};

} // namespace fadewell
