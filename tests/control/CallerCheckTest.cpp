#include "control/CallerCheck.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace fadewell {
namespace {

/// A bus that answers when it is told to.
struct SlowBus {
    using Answer = std::function<void(std::optional<CallerCheck::UserID>)>;

    CallerCheck::Lookup lookup()
    {
        return [this](const QString& caller, Answer answer) {
            asked += caller.toStdString() + ' ';
            answers.push_back(std::move(answer));
        };
    }

    std::string asked;
    std::vector<Answer> answers;
};

TEST(CallerCheckTest, AsksOnceForEachCallerAndKeepsTheOrder)
{
    SlowBus bus;
    CallerCheck check(1000, bus.lookup());
    std::string order;
    check.check(":1.1", [&](bool ok) { order += ok ? "a" : "A"; });
    check.check(":1.1", [&](bool ok) { order += ok ? "b" : "B"; });
    check.check(":1.2", [&](bool ok) { order += ok ? "c" : "C"; });
    EXPECT_EQ(bus.asked, ":1.1 :1.2 ");
    EXPECT_EQ(order, "");
    bus.answers[1](1001);
    bus.answers[0](1000);
    EXPECT_EQ(order, "Cab");
    check.check(":1.1", [&](bool ok) { order += ok ? "d" : "D"; });
    EXPECT_EQ(order, "Cabd") << "an allowed caller is remembered";
    EXPECT_EQ(bus.asked, ":1.1 :1.2 ");
}

TEST(CallerCheckTest, RefusesWhomTheBusDoesNotKnow)
{
    SlowBus bus;
    CallerCheck check(0, bus.lookup());
    std::string order;
    check.check("", [&](bool ok) { order += ok ? "a" : "A"; });
    bus.answers[0](std::nullopt);
    EXPECT_EQ(order, "A");
    check.check("", [&](bool ok) { order += ok ? "b" : "B"; });
    EXPECT_EQ(bus.answers.size(), 2U) << "a refusal is not remembered";
}

TEST(CallerCheckTest, DropsAnswersAfterItsEnd)
{
    SlowBus bus;
    bool answered = false;
    {
        CallerCheck check(0, bus.lookup());
        check.check(":1.1", [&](bool) { answered = true; });
    }
    bus.answers[0](0);
    EXPECT_FALSE(answered);
}

} // namespace
} // namespace fadewell
