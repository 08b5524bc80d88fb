#include "core/CallMode.h"

#include <gtest/gtest.h>

namespace fadewell {
namespace {

using Users = std::set<std::string>;

class CallModeTest : public testing::Test {
protected:
    void startCall()
    {
        mode.update({"com.call"}, 10.0);
        mode.update({"com.call"}, 11.0);
    }

    CallMode mode{{{"com.call", "com.browser"}, true, 1.0, 5.0}};
};

TEST_F(CallModeTest, DetectsACallOnlyAfterTheStartDelay)
{
    mode.update({"com.call", "com.recorder"}, 10.0);
    EXPECT_EQ(mode.nextDeadline(), 11.0);
    mode.update({"com.call"}, 10.5);
    EXPECT_FALSE(mode.isCallDetected);
    mode.update({"com.call", "com.recorder"}, 11.0);
    EXPECT_TRUE(mode.isActive());
    EXPECT_EQ(mode.callAppIDs, Users{"com.call"});
    EXPECT_FALSE(mode.nextDeadline());
}

TEST_F(CallModeTest, NeitherShortUseNorUnknownAppsMakeACall)
{
    mode.update({"com.browser"}, 10.0);
    mode.update({}, 10.9);
    EXPECT_FALSE(mode.nextDeadline());
    mode.update({"com.browser"}, 11.0); // The delay counts from anew.
    EXPECT_FALSE(mode.isCallDetected);
    mode.update({"com.recorder"}, 12.0);
    mode.update({"com.recorder"}, 20.0);
    EXPECT_FALSE(mode.isCallDetected);
}

TEST_F(CallModeTest, EndsOnlyAfterTheEndDelay)
{
    startCall();
    mode.update({}, 20.0);
    EXPECT_EQ(mode.nextDeadline(), 25.0);
    mode.update({}, 24.9);
    EXPECT_TRUE(mode.isCallDetected);
    mode.update({"com.browser"}, 24.95); // Resumed, by another app.
    EXPECT_FALSE(mode.idleSince);
    mode.update({}, 30.0);
    EXPECT_EQ(mode.callAppIDs, (Users{"com.call", "com.browser"}));
    mode.update({}, 35.0);
    EXPECT_FALSE(mode.isActive());
    EXPECT_TRUE(mode.callAppIDs.empty());
    EXPECT_FALSE(mode.nextDeadline());
}

TEST_F(CallModeTest, OverrideLastsUntilTheNextDetectedStartOrEnd)
{
    mode.manualOverride = false;
    mode.update({"com.call"}, 10.0);
    EXPECT_EQ(mode.manualOverride, false);
    mode.update({"com.call"}, 11.0);
    EXPECT_TRUE(mode.isActive());

    mode.manualOverride = false;
    mode.update({"com.call"}, 12.0);
    mode.update({}, 13.0);
    EXPECT_TRUE(mode.isCallDetected);
    EXPECT_FALSE(mode.isActive());
    mode.manualOverride = true;
    mode.update({}, 18.0);
    EXPECT_FALSE(mode.manualOverride);
    EXPECT_FALSE(mode.isActive());
}

TEST_F(CallModeTest, WithoutAutomaticOnlyAnOverrideActivates)
{
    mode.configuration.isAutomatic = false;
    startCall();
    EXPECT_TRUE(mode.isCallDetected);
    EXPECT_FALSE(mode.isActive());
    mode.manualOverride = true;
    EXPECT_TRUE(mode.isActive());
}

TEST_F(CallModeTest, ZeroDelaysSwitchAtOnce)
{
    mode.configuration.startDelay = 0;
    mode.configuration.endDelay = 0;
    mode.update({"com.call"}, 1.0);
    EXPECT_TRUE(mode.isCallDetected);
    mode.update({}, 1.0);
    EXPECT_FALSE(mode.isCallDetected);
}

} // namespace
} // namespace fadewell
