#pragma once

#include "app/Workspace.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fadewell {

/// A desktop with the applications that the preview shows.
class PreviewWorkspace final : public Workspace {
public:
    std::vector<RunningApplication> running;

    [[nodiscard]] std::vector<RunningApplication> runningApplications() override { return running; }
    [[nodiscard]] Subscription onLaunch(std::function<void()> /*launched*/) override { return {}; }
    [[nodiscard]] std::optional<RunningApplication> frontmost() override { return std::nullopt; }
    [[nodiscard]] std::optional<AppLocation> location(std::string_view bundleID) override
    {
        const auto found = std::ranges::find_if(
            running, [&](const auto& each) { return each.bundleID == bundleID; });
        return found == running.end()
                   ? std::nullopt
                   : std::optional(AppLocation{"", found->name.value(), found->icon.value()});
    }
    [[nodiscard]] AppLocation describe(std::string_view path) override
    {
        return {std::string(path), std::string(path), {}};
    }
    void announce(std::string_view /*text*/, int /*priority*/) override {}
    [[nodiscard]] std::int32_t ownPID() const override { return 1; }
};

} // namespace fadewell
