#include "platform/linux/supervision/HangJudge.h"
#include "platform/linux/supervision/RestartBudget.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace fadewell {
namespace {

/// One letter a tick. What happened before it: c a callback came and went, ( one came and stays,
/// a the loop answered, . nothing, i no stream runs any more.
std::string judged(std::string_view ticks)
{
    HangJudge judge;
    Heartbeat::Reading reading;
    std::string verdicts;
    for (const char event : ticks) {
        reading.isWatched = event != 'i';
        reading.entered += event == 'c' || event == '(' ? 1 : 0;
        reading.left += event == 'c' ? 1 : 0;
        reading.answers += event == 'a' ? 1 : 0;
        verdicts += "iaqh"[static_cast<int>(judge.tick(reading))];
    }
    return verdicts; // i idle, a alive, q quiet, h hung
}

TEST(SupervisionTest, HangsOnlyWhatGivesNoSignOfLifeWhileItIsHeard)
{
    EXPECT_EQ(judged("cccc"), "aaaa");
    EXPECT_EQ(judged(".c.c.a.c"), "aaqaqaqa") << "long cycles";
    EXPECT_EQ(judged("c.a.a.a.a.a.a"), "aqaqaqaqaqaqa") << "the sound stands still";
    EXPECT_EQ(judged("c....c....."), "aqqqqaqqqqh") << "just in time, then not";
    EXPECT_EQ(judged("c......"), "aqqqqhh") << "as long as it hangs";
    EXPECT_EQ(judged("c(aaaaa"), "aqqqqhh") << "stuck inside the callback";
    EXPECT_EQ(judged("c....iiiii....."), "aqqqqiiiiiaqqqq") << "not heard any more, then again";
}

TEST(SupervisionTest, RestartsOnceAndAgainOnlyAfterALongGoodRun)
{
    RestartBudget budget;
    EXPECT_TRUE(budget.allows(0, 1));
    EXPECT_FALSE(budget.allows(1, RestartBudget::goodRun));
    EXPECT_TRUE(budget.allows(1, 1 + RestartBudget::goodRun));
    EXPECT_FALSE(budget.allows(1 + RestartBudget::goodRun, 2 + RestartBudget::goodRun));
}

} // namespace
} // namespace fadewell
