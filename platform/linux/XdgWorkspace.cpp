#include "platform/linux/XdgWorkspace.h"

#include <unistd.h>
#include <utility>

namespace fadewell {

XdgWorkspace::XdgWorkspace(std::shared_ptr<AppIdentities> identities,
                           std::shared_ptr<SerialQueue> mainQueue,
                           std::unique_ptr<FrontWindow> front)
    : identities_(std::move(identities))
    , mainQueue_(std::move(mainQueue))
    , front_(std::move(front))
{}

std::vector<RunningApplication> XdgWorkspace::runningApplications()
{
    return identities_->runningApplications();
}

Subscription XdgWorkspace::onLaunch(std::function<void()> launched)
{
    // Shared, so that a call that is already posted finds out that its listener has gone.
    auto listener = std::make_shared<std::function<void()>>(std::move(launched));
    auto inner = std::make_shared<Subscription>(identities_->onAppeared(
        [weak = std::weak_ptr(listener), queue = std::weak_ptr(mainQueue_)] {
            if (const auto main = queue.lock()) {
                main->async([weak] {
                    if (const auto told = weak.lock()) {
                        (*told)();
                    }
                });
            }
        }));
    return Subscription([inner, listener]() mutable {
        inner->cancel();
        listener.reset();
    });
}

std::optional<RunningApplication> XdgWorkspace::frontmost()
{
    const auto window = front_ ? front_->window() : std::nullopt;
    return window ? identities_->application(window->pid, window->appID) : std::nullopt;
}

bool XdgWorkspace::tellsFrontmost()
{
    return front_ && front_->isTold();
}

std::optional<AppLocation> XdgWorkspace::location(std::string_view bundleID)
{
    return identities_->location(bundleID);
}

AppLocation XdgWorkspace::describe(std::string_view path)
{
    return identities_->describe(path);
}

void XdgWorkspace::announce(std::string_view text, int priority)
{
    log_.info("Announced with priority {}", priority); // The text names apps.
    if (show_) {
        show_(text);
    }
}

std::int32_t XdgWorkspace::ownPID() const
{
    return getpid();
}

} // namespace fadewell
