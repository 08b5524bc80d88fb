#include "core/TapPlanner.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fadewell {
namespace {

using namespace tap_action;
using testing::ElementsAre;
using testing::IsEmpty;

TapTarget target(double gain, double duck = 1.0, bool isPlaying = true, bool isRerouted = false)
{
    return {"a", {3, 5}, gain, duck, isPlaying, "X", isRerouted};
}

TapSessionState session(double gain, double duck = 1.0, std::optional<double> unitySince = {})
{
    return {{3, 5}, "X", gain, duck, true, unitySince};
}

std::vector<TapAction>
plan(const TapTarget& wanted, const TapSessionState& existing, double now = 0)
{
    return TapPlanner::plan({&wanted, 1}, {{"a", existing}}, {}, now);
}

TEST(TapPlannerTest, CreatesASessionOnlyWhereOneIsNeeded)
{
    const struct {
        const char* why;
        TapTarget target;
        bool isCreated;
    } cases[] = {
        {"untouched", target(1, 1, true), false},
        {"changed gain, silent", target(0.5, 1, false), true},
        {"a gain next to 1", target(std::nextafter(1.0, 0.0), 1, false), true},
        {"lowered, silent", target(1, 0.2, false), false},
        {"lowered, playing", target(1, 0.2, true), true},
        {"changed and lowered, silent", target(0.5, 0.2, false), true},
        {"rerouted, silent", target(1, 1, false, true), true},
        {"rerouted and lowered, silent", target(1, 0.2, false, true), true},
    };
    for (const auto& [why, wanted, isCreated] : cases) {
        const auto expected =
            isCreated ? std::vector<TapAction>{Create{wanted}} : std::vector<TapAction>{};
        EXPECT_EQ(TapPlanner::plan({&wanted, 1}, {}, {"b"}, 0), expected) << why;
        EXPECT_THAT(TapPlanner::plan({&wanted, 1}, {}, {"a"}, 0), IsEmpty()) << why;
    }
}

TEST(TapPlannerTest, DestroysUnwantedSessionsFirstAndInOrder)
{
    const auto wanted = target(0.5);
    EXPECT_THAT(TapPlanner::plan({&wanted, 1}, {{"b", session(1)}, {"0", session(1)}}, {}, 0),
                ElementsAre(Destroy{"0"}, Destroy{"b"}, Create{wanted}));
}

TEST(TapPlannerTest, PlansOnlyWhatDiffersInAFixedOrder)
{
    EXPECT_THAT(plan(target(0.5), session(0.5)), IsEmpty());
    const double next = std::nextafter(0.5, 1.0);
    EXPECT_THAT(plan(target(next), session(0.5)), ElementsAre(SetGain{"a", next}));

    auto stopped = session(1, 1);
    stopped.isRunning = false;
    stopped.outputDeviceUID = "Y";
    stopped.processObjectIDs = {5, 3};
    const auto wanted = target(0.5, 0.2);
    const auto all = ElementsAre(SetOutput{"a", "X"},
                                 SetGain{"a", 0.5},
                                 SetDuck{"a", 0.2},
                                 SetProcesses{"a", {3, 5}},
                                 Start{"a"});
    EXPECT_THAT(plan(wanted, stopped), all);
    EXPECT_THAT(TapPlanner::plan({&wanted, 1}, {{"a", stopped}}, {"a"}, 0), all); // Not held back.
    auto running = session(0.5);
    EXPECT_THAT(plan(target(0.5, 1, false), running), ElementsAre(Stop{"a"}));
    running.isRunning = false;
    EXPECT_THAT(plan(target(0.5, 1, false), running), IsEmpty());
}

TEST(TapPlannerTest, ReleasesASessionAtUnityAfterTheGracePeriod)
{
    const auto unity = session(1, 1, 10.0);
    EXPECT_THAT(plan(target(1), unity, 12.9), IsEmpty());
    EXPECT_THAT(plan(target(1), unity, 13.0), ElementsAre(Destroy{"a"}));
    EXPECT_THAT(plan(target(1, 0.5), unity, 13.0), ElementsAre(SetDuck{"a", 0.5}));
    EXPECT_THAT(plan(target(1, 1, true, true), unity, 13.0), IsEmpty());
    // The session's own gains don't count here, only since when it was at unity.
    EXPECT_THAT(plan(target(1), session(0.5, 0.2), 99),
                ElementsAre(SetGain{"a", 1}, SetDuck{"a", 1}));
    EXPECT_THAT(plan(target(1), session(0.5, 1, 10.0), 13.0), ElementsAre(Destroy{"a"}));
    // On a device that is no longer wanted it goes at once.
    auto elsewhere = session(0.5, 1, 10.0);
    elsewhere.outputDeviceUID = "";
    EXPECT_THAT(plan(target(1), elsewhere, 10.0), ElementsAre(Destroy{"a"}));
    EXPECT_THAT(plan(target(1, 1, true, true), elsewhere, 10.0),
                ElementsAre(SetOutput{"a", "X"}, SetGain{"a", 1}));
}

TEST(TapPlannerTest, NextDeadlineCountsOnlySessionsAtUnity)
{
    EXPECT_FALSE(TapPlanner::nextUnityDeadline({{"a", session(1)}, {"b", session(0.9, 1, 1.0)}}));
    const TapPlanner::Sessions sessions = {{"a", session(1, 1, 10.0)},
                                           {"b", session(1, 1, 8.0)},
                                           {"c", session(0.9, 1, 1.0)},
                                           {"d", session(1, 0.2, 2.0)}};
    EXPECT_EQ(TapPlanner::nextUnityDeadline(sessions), 11.0);
}

} // namespace
} // namespace fadewell
