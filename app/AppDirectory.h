#pragma once

#include "app/AppIcon.h"
#include "app/Workspace.h"
#include "core/AudioApp.h"

#include <map>
#include <memory>
#include <string>

namespace fadewell {

/// Names and icons of apps. The first answer for an identifier is kept for the whole run. [main
/// queue]
class AppDirectory final {
public:
    struct Identity {
        std::string name;
        AppIcon icon;
        bool operator==(const Identity&) const = default;
    };

    explicit AppDirectory(std::shared_ptr<Workspace> workspace);

    /// Reads only the app's `id`, `bundleID` and `pids`. Always answers, if need be with fallbacks.
    Identity identity(const AudioApp& app);

private:
    [[nodiscard]] Identity lookUp(const AudioApp& app) const;

    std::shared_ptr<Workspace> workspace_;
    std::map<std::string, Identity> cache_;
};

} // namespace fadewell
