#include "tests/integration/support/StartTally.h"

#include <gtest/gtest.h>
#include <map>

namespace fadewell::integration {
namespace {

TEST(StartTallyTest, FindsWhatIsWorseThanUntouched)
{
    const auto tallyOf = [](CountedCheck check) {
        StartTally tally;
        for (int i = 0; i < 20; ++i) {
            tally.add(check);
        }
        return tally;
    };
    const auto untouched = tallyOf({.isHeard = true, .tail = 736});
    const std::map<std::string, CountedCheck> faults{
        {"", {.isHeard = true, .tail = 736}},
        {"not heard", {.tail = 736}},
        {"not measured", {.isHeard = true, .isMeasured = false}},
        {"wrong volume", {.isHeard = true, .wrong = 1}},
        {"head lost", {.isHeard = true, .head = 1}},
        {"lost inside", {.isHeard = true, .inside = 1}},
        {"tail lost", {.isHeard = true, .tail = 737}},
        {"silence inside", {.isHeard = true, .zeros = 1}}};
    for (const auto& [name, check] : faults) {
        EXPECT_EQ(tallyOf(check).faultsBeside(untouched), name);
        StartTally added;
        added.add(tallyOf(check));
        EXPECT_EQ(added.faultsBeside(untouched), name);
    }
}

} // namespace
} // namespace fadewell::integration
