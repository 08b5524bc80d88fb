#pragma once

#include "app/Workspace.h"

#include <string>
#include <utility>
#include <vector>

namespace fadewell {

/// A desktop with the applications that a test names.
class FakeWorkspace final : public Workspace {
public:
    std::vector<RunningApplication> running;

    std::vector<RunningApplication> runningApplications() override { return running; }
    Subscription onLaunch(std::function<void()> /*launched*/) override { return {}; }
    std::optional<RunningApplication> frontmost() override { return std::nullopt; }
    std::optional<AppLocation> location(std::string_view bundleID) override
    {
        if (bundleID == "org.mozilla.firefox") {
            return AppLocation{"/apps/firefox", "Firefox", {}};
        }
        return std::nullopt;
    }
    AppLocation describe(std::string_view path) override { return {std::string(path), "", {}}; }
    void announce(std::string_view /*text*/, int /*priority*/) override {}
    std::int32_t ownPID() const override { return 1; }
};

} // namespace fadewell
