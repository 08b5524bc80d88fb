#pragma once

#include "app/Workspace.h"
#include "base/Logger.h"
#include "base/SerialQueue.h"
#include "platform/linux/desktop/FrontWindow.h"
#include "platform/linux/identity/AppIdentities.h"

#include <functional>
#include <memory>
#include <utility>

namespace fadewell {

/// The desktop as far as desktop entries and audio clients tell: an application runs when it has an
/// audio client. [main queue]
class XdgWorkspace final : public Workspace {
public:
    /// `front` is null where the desktop hides the window in front.
    XdgWorkspace(std::shared_ptr<AppIdentities> identities,
                 std::shared_ptr<SerialQueue> mainQueue,
                 std::unique_ptr<FrontWindow> front = nullptr);

    [[nodiscard]] std::vector<RunningApplication> runningApplications() override;
    [[nodiscard]] Subscription onLaunch(std::function<void()> launched) override;

    /// The application of the window in front, whether it plays or not.
    [[nodiscard]] std::optional<RunningApplication> frontmost() override;
    [[nodiscard]] bool tellsFrontmost() override;

    /// The path is the desktop entry's.
    [[nodiscard]] std::optional<AppLocation> location(std::string_view bundleID) override;
    [[nodiscard]] AppLocation describe(std::string_view path) override;

    /// Shows what is announced on the screen, too.
    void onAnnounced(std::function<void(std::string_view)> show) { show_ = std::move(show); }

    /// Logs the text, and shows it where that was arranged.
    void announce(std::string_view text, int priority) override;

    [[nodiscard]] std::int32_t ownPID() const override;

private:
    const Logger log_{"workspace"};
    std::shared_ptr<AppIdentities> identities_;
    std::shared_ptr<SerialQueue> mainQueue_;
    std::unique_ptr<FrontWindow> front_; ///< may be null
    std::function<void(std::string_view)> show_;
};

} // namespace fadewell
