#include "app/AppDirectory.h"

#include "tests/support/SimulatedWorkspace.h"

#include <gtest/gtest.h>

namespace fadewell {
namespace {

AudioApp app(const std::string& id, std::optional<std::string> bundleID, std::vector<int> pids)
{
    return {id, std::move(bundleID), std::move(pids), {}, false, false, {}};
}

TEST(AppDirectoryTest, AsksTheRunningAppFirstThenWhereItIsInstalled)
{
    auto workspace = std::make_shared<SimulatedWorkspace>();
    const AppIcon icon{"own", {}};
    workspace->installed["com.a"] = {"/a", "Installed A", {"a", {}}};
    workspace->running = {{.pid = 1, .name = "Running", .icon = icon},
                          {.pid = 2, .icon = icon, .location = "/b"},
                          {.pid = 3, .name = "Three", .location = "/c"},
                          {.pid = 4}};
    const struct {
        AudioApp app;
        AppDirectory::Identity identity;
    } cases[] = {
        {app("both", "com.a", {99, 1, 2}), {"Running", icon}},
        {app("path name", "com.a", {2}), {"At /b", icon}},
        {app("path icon", "com.a", {3}), {"Three", {"at-path", {}}}},
        {app("running but bare", "com.a", {4}), {"Installed A", {"a", {}}}},
        {app("installed", "com.a", {}), {"Installed A", {"a", {}}}},
        {app("not installed", "com.b", {}), {"com.b", AppIcon::generic()}},
        {app("nothing", {}, {99}), {"Unknown App", AppIcon::generic()}},
    };
    AppDirectory directory(workspace); // Keeps its first answer.
    const auto first = directory.identity(app("same", {}, {1}));
    for (const auto& [audioApp, identity] : cases) {
        EXPECT_EQ(AppDirectory(workspace).identity(audioApp), identity) << audioApp.id;
        EXPECT_EQ(directory.identity(app("same", audioApp.bundleID, audioApp.pids)), first);
    }
}

} // namespace
} // namespace fadewell
