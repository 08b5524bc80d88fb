#pragma once

#include "app/Workspace.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace fadewell {

/// A desktop as scripted. Its public fields may be changed at any time.
class SimulatedWorkspace final : public Workspace {
public:
    std::vector<RunningApplication> running;
    std::optional<RunningApplication> front;
    bool hidesFront = false;                                   ///< as some desktops do
    std::map<std::string, AppLocation, std::less<>> installed; ///< by bundle identifier
    std::int32_t pid = 1;                                      ///< this program's
    std::vector<std::string> announcements;                    ///< "priority: text"

    /// Starts an application and tells so.
    void launch(const RunningApplication& application)
    {
        running.push_back(application);
        if (const auto observer = *observer_) {
            observer();
        }
    }

    [[nodiscard]] std::vector<RunningApplication> runningApplications() override { return running; }
    [[nodiscard]] Subscription onLaunch(std::function<void()> launched) override
    {
        *observer_ = std::move(launched);
        return Subscription([observer = observer_] { *observer = nullptr; });
    }
    [[nodiscard]] std::optional<RunningApplication> frontmost() override { return front; }
    [[nodiscard]] bool tellsFrontmost() override { return !hidesFront; }
    [[nodiscard]] std::optional<AppLocation> location(std::string_view bundleID) override
    {
        const auto found = installed.find(bundleID);
        return found == installed.end() ? std::nullopt : std::optional(found->second);
    }
    [[nodiscard]] AppLocation describe(std::string_view path) override
    {
        return {std::string(path), "At " + std::string(path), {"at-path", {}}};
    }
    void announce(std::string_view text, int priority) override
    {
        announcements.push_back(std::to_string(priority) + ": " + std::string(text));
    }
    [[nodiscard]] std::int32_t ownPID() const override { return pid; }

private:
    std::shared_ptr<std::function<void()>> observer_ = std::make_shared<std::function<void()>>();
};

} // namespace fadewell
