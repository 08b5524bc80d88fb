#pragma once

#include "app/Workspace.h"
#include "base/Logger.h"
#include "base/SerialQueue.h"
#include "platform/linux/identity/AppIdentities.h"

#include <memory>

namespace fadewell {

/// The desktop as far as desktop entries and audio clients tell: an application runs when it has an
/// audio client. [main queue]
class XdgWorkspace final : public Workspace {
public:
    XdgWorkspace(std::shared_ptr<AppIdentities> identities, std::shared_ptr<SerialQueue> mainQueue);

    [[nodiscard]] std::vector<RunningApplication> runningApplications() override;
    [[nodiscard]] Subscription onLaunch(std::function<void()> launched) override;

    /// Always absent: desktops tell programs without windows nothing about the window in front (X11
    /// does, Wayland compositors each in their own way or not at all).
    [[nodiscard]] std::optional<RunningApplication> frontmost() override;

    /// The path is the desktop entry's.
    [[nodiscard]] std::optional<AppLocation> location(std::string_view bundleID) override;
    [[nodiscard]] AppLocation describe(std::string_view path) override;

    /// Logs the text: assistive technology listens to windows, and this program has none.
    void announce(std::string_view text, int priority) override;

    [[nodiscard]] std::int32_t ownPID() const override;

private:
    const Logger log_{"workspace"};
    std::shared_ptr<AppIdentities> identities_;
    std::shared_ptr<SerialQueue> mainQueue_;
};

} // namespace fadewell
