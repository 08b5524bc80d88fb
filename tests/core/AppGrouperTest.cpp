#include "core/AppGrouper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fadewell {
namespace {

using testing::ElementsAre;

constexpr std::int32_t ownPID = 1;

const std::vector<RunningApp> runningApps = {
    {ownPID, "app.own", false},
    {10, "com.example", false},
    {11, "com.example.Browser", false},
    {12, "com.example.Browser", false}, // a second instance
    {2, std::nullopt, false},
    {13, std::nullopt, false},
    {14, "com.agent", true},
    {15, "com.apple.loginwindow", false},
    {13, "com.late", false}, // shares a process identifier with an earlier one
};

AudioProcess process(std::uint32_t id,
                     std::int32_t pid,
                     std::optional<std::string> bundleID = {},
                     std::optional<std::int32_t> parent = {},
                     std::optional<std::int32_t> responsible = {})
{
    return {id, pid, std::move(bundleID), false, false, parent, responsible, {}};
}

std::vector<AudioApp> grouped(const std::vector<AudioProcess>& processes,
                              const std::vector<RunningApp>& apps = runningApps)
{
    return AppGrouper::group(processes, apps, AppGrouper::ignoredBundleIDs(), {ownPID});
}

std::string ownerOf(const AudioProcess& process, const std::vector<RunningApp>& apps = runningApps)
{
    const auto result = grouped({process}, apps);
    return result.empty() ? "nobody" : result.front().id;
}

TEST(AppGrouperTest, FindsTheOwnerOfAProcess)
{
    const struct {
        const char* why;
        AudioProcess process;
        const char* owner;
    } cases[] = {
        {"itself", process(1, 10), "com.example"},
        {"itself before others", process(1, 10, {}, 11, 11), "com.example"},
        {"responsible before parent", process(1, 99, {}, 11, 10), "com.example"},
        {"parent", process(1, 99, {}, 11, 98), "com.example.Browser"},
        {"pid before prefix", process(1, 99, "com.example.Browser.x", 10), "com.example"},
        {"longest prefix", process(1, 99, "com.example.Browser.a.b"), "com.example.Browser"},
        {"shorter prefix", process(1, 99, "com.example.Player"), "com.example"},
        {"prefix needs the dot", process(1, 99, "com.exampleX.Player"), "nobody"},
        {"prefix is case-sensitive", process(1, 99, "com.Example.Player"), "nobody"},
        {"equal is no prefix", process(1, 99, "com.agent"), "nobody"},
        {"nothing matches", process(1, 99, {}, 97, 98), "nobody"},
        {"no identifier, first of equal pids", process(1, 13), "pid:13"},
        {"background-only, not passed on", process(1, 14, "com.example.x", 11, 10), "nobody"},
        {"background-only by prefix", process(1, 99, "com.agent.helper"), "nobody"},
        {"ignored", process(1, 15), "nobody"},
        {"this program", process(1, ownPID), "nobody"},
        {"this program's helper", process(1, 99, {}, ownPID), "nobody"},
    };
    for (const auto& [why, audioProcess, owner] : cases) {
        EXPECT_EQ(ownerOf(audioProcess), owner) << why;
    }
}

TEST(AppGrouperTest, CallServicesPreferOppositeOwnersAndFallBackToNobodyElse)
{
    const RunningApp faceTime{20, "com.apple.FaceTime", true}; // background-only doesn't count here
    const RunningApp phone{21, "com.apple.mobilephone", false};
    const RunningApp parent{22, "com.parent", false};
    const auto conferencing = process(1, 22, "com.apple.avconferenced", 22, 22);
    const auto telephony = process(2, 22, "com.apple.TelephonyUtilities", 22, 22);

    EXPECT_EQ(ownerOf(conferencing, {phone, faceTime, parent}), "com.apple.FaceTime");
    EXPECT_EQ(ownerOf(telephony, {faceTime, phone, parent}), "com.apple.mobilephone");
    EXPECT_EQ(ownerOf(conferencing, {phone, parent}), "com.apple.mobilephone");
    EXPECT_EQ(ownerOf(telephony, {faceTime, parent}), "com.apple.FaceTime");
    EXPECT_EQ(ownerOf(conferencing, {parent}), "nobody");
    EXPECT_EQ(ownerOf(telephony, {parent}), "nobody");
}

TEST(AppGrouperTest, JoinsTheProcessesOfAnAppAndSortsAppsByText)
{
    auto first = process(9, 12);
    first.isRunningOutput = true;
    first.outputDeviceIDs = {7, 5};
    auto second = process(3, 11);
    second.isRunningInput = true;
    second.outputDeviceIDs = {5, 9};
    const auto again = process(3, 99, {}, 12);

    const auto apps = grouped({process(1, 13), first, process(2, 2), second, again});
    ASSERT_EQ(apps.size(), 3U);
    EXPECT_EQ(apps[1].id + " " + apps[2].id, "pid:13 pid:2");
    EXPECT_EQ(apps[0].bundleID, "com.example.Browser");
    EXPECT_THAT(apps[0].pids, ElementsAre(11, 12));
    EXPECT_THAT(apps[0].processObjectIDs, ElementsAre(3, 3, 9));
    EXPECT_THAT(apps[0].outputDeviceIDs, ElementsAre(7, 5, 9));
    EXPECT_TRUE(apps[0].isPlaying && apps[0].isUsingMicrophone);
}

} // namespace
} // namespace fadewell
