#include "platform/linux/pipewire/ProcessPIDs.h"

#include <gtest/gtest.h>

namespace fadewell::pipewire {
namespace {

GraphClient clientWith(Properties props)
{
    GraphClient client;
    client.props = std::move(props);
    client.hasInfo = true;
    return client;
}

TEST(ProcessPIDsTest, PrefersWhatTheKernelSaysUnlessADaemonSpeaks)
{
    struct Case {
        const char* what;
        Properties node;
        Properties client;
        std::optional<std::int32_t> pid;
    };
    const Properties pulse = {{"client.api", "pipewire-pulse"},
                              {"pipewire.sec.pid", "900"},
                              {"application.process.id", "77"}};
    const Properties silent = {{"client.api", "pipewire-pulse"}, {"pipewire.sec.pid", "900"}};
    const Case cases[] = {
        {"native", {}, {{"pipewire.sec.pid", "55"}, {"application.process.id", "7"}}, 55},
        {"lies on its stream", {{"application.process.id", "1"}}, {{"pipewire.sec.pid", "55"}}, 55},
        {"native without credentials", {}, {{"application.process.id", "7"}}, 7},
        {"Pulse", {{"application.process.id", "77"}}, pulse, 77},
        {"Pulse, stream without a pid", {}, pulse, 77},
        {"silent Pulse", {}, silent, {}},
        {"sandboxed native", {}, {{"pipewire.sec.pid", "55"}, {"pipewire.access", "flatpak"}}, 55},
        {"garbage", {}, {{"application.process.id", "7; reboot"}}, {}},
        {"negative", {}, {{"application.process.id", "-7"}}, {}},
        {"zero", {}, {{"pipewire.sec.pid", "0"}}, {}},
        {"huge", {}, {{"application.process.id", "99999999999999999999"}}, {}},
        {"posing as made up", {}, {{"application.process.id", "1073741825"}}, {}},
    };
    for (const Case& each : cases) {
        ProcessPIDs pids;
        const GraphClient client = clientWith(each.client);
        EXPECT_EQ(pids.resolve(each.node, &client), each.pid) << each.what;
    }
    const GraphClient early{{.props = {{"pipewire.sec.pid", "900"}}}};
    EXPECT_EQ(ProcessPIDs().resolve({}, &early), std::nullopt) << "may still turn out a daemon's";
}

TEST(ProcessPIDsTest, MakesUpOnePidForEachSandboxedProcess)
{
    ProcessPIDs pids;
    const auto resolve = [&](const char* app, const char* inside) {
        const GraphClient client = clientWith({{"client.api", "pipewire-pulse"},
                                               {"pipewire.access.portal.app_id", app},
                                               {"application.process.id", inside}});
        return pids.resolve({}, &client);
    };
    const auto first = resolve("org.example.Player", "2");
    ASSERT_TRUE(first);
    EXPECT_GT(*first, 0x40000000);
    EXPECT_EQ(resolve("org.example.Player", "2"), first);
    EXPECT_NE(resolve("org.example.Other", "2"), first);
    EXPECT_NE(resolve("org.example.Player", "3"), first);
}

} // namespace
} // namespace fadewell::pipewire
