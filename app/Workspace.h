#pragma once

#include "app/AppIcon.h"
#include "base/Subscription.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fadewell {

/// One running application as the desktop knows it.
struct RunningApplication {
    std::int32_t pid = 0; ///< as the audio hardware reports it
    std::optional<std::string> bundleID{};
    std::optional<std::string> name{}; ///< localized
    std::optional<AppIcon> icon{};
    std::optional<std::string> location{}; ///< where it is installed

    bool operator==(const RunningApplication&) const = default;
};

/// Where an application is installed, and what is shown for it.
struct AppLocation {
    std::string path;
    std::string displayName; ///< localized
    AppIcon icon;

    bool operator==(const AppLocation&) const = default;
};

/// The desktop around the program. [main queue]
class Workspace {
public:
    virtual ~Workspace() = default;

    /// In launch order.
    [[nodiscard]] virtual std::vector<RunningApplication> runningApplications() = 0;

    /// Calls `launched` on the main queue after an application has started.
    [[nodiscard]] virtual Subscription onLaunch(std::function<void()> launched) = 0;

    /// The application in front, as far as this desktop tells; absent where it doesn't.
    [[nodiscard]] virtual std::optional<RunningApplication> frontmost() = 0;
    /// Whether this desktop tells what is in front. Where it doesn't, the best guess is the app
    /// that began to play last.
    [[nodiscard]] virtual bool tellsFrontmost() { return true; }

    [[nodiscard]] virtual std::optional<AppLocation> location(std::string_view bundleID) = 0;

    /// What is shown for an installed application at a path.
    [[nodiscard]] virtual AppLocation describe(std::string_view path) = 0;

    /// Says a text through assistive technology; 10 is low, 50 medium, 90 high.
    virtual void announce(std::string_view text, int priority) = 0;

    /// This program's own process.
    [[nodiscard]] virtual std::int32_t ownPID() const = 0;
};

} // namespace fadewell
