#include "core/CallMode.h"

#include "base/MemoryUserDefaults.h"
#include "core/CallModeSettings.h"

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
    mode.update({"com.browser"}, 8.0);
    mode.update({}, 8.9);
    EXPECT_FALSE(mode.nextDeadline());
    mode.update({"com.call", "com.recorder"}, 10.0); // The delay counts from anew.
    EXPECT_EQ(mode.nextDeadline(), 11.0);
    mode.update({"com.call"}, 10.9);
    EXPECT_FALSE(mode.isCallDetected);
    mode.update({"com.call", "com.recorder"}, 11.0);
    EXPECT_TRUE(mode.isActive());
    EXPECT_EQ(mode.callAppIDs, Users{"com.call"});
    EXPECT_FALSE(mode.nextDeadline());
}

TEST_F(CallModeTest, EndsOnlyAfterTheEndDelay)
{
    startCall();
    mode.update({"com.recorder"}, 20.0);
    EXPECT_EQ(mode.nextDeadline(), 25.0);
    mode.update({}, 24.9);
    EXPECT_TRUE(mode.isCallDetected);
    mode.update({"com.browser"}, 24.95); // Resumed, by another app.
    EXPECT_FALSE(mode.nextDeadline());
    mode.update({}, 30.0);
    EXPECT_EQ(mode.callAppIDs, (Users{"com.call", "com.browser"}));
    mode.update({}, 35.0);
    EXPECT_FALSE(mode.isActive());
    EXPECT_EQ(mode, CallMode(mode.configuration));
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
}

constexpr const char* key = CallModeSettings::defaultKey;

TEST(CallModeSettingsTest, LoadsMemberByMemberAndWritesNothing)
{
    const std::pair<const char*, CallModeSettings> cases[] = {
        {R"({"isAutomatic":false})", {false, 0.2, {}}},
        {R"({"level":7,"more":{}})", {true, 1.0, {}}},
        {R"({"level":-1})", {true, 0.0, {}}},
        {R"({"level":1e400,"isAutomatic":false})", {false, 0.2, {}}},
        {R"({"isAutomatic":0,"level":"1","excludedApps":"a"})", {}},
        {R"({"level":0.5,"excludedApps":["a",1]})", {true, 0.5, {}}},
        {R"({"excludedApps":["b","a","b"]})", {true, 0.2, {"a", "b"}}},
        {R"([false])", {}},
        {R"(no JSON)", {}},
    };
    for (const auto& [text, settings] : cases) {
        MemoryUserDefaults defaults;
        defaults.set(key, UserDefaults::Data{text});
        EXPECT_EQ(CallModeSettings::load(defaults), settings) << text;
        EXPECT_EQ(defaults.writes(), 1);
    }
}

TEST(CallModeSettingsTest, SavesAllMembersButNeverTheDefault)
{
    MemoryUserDefaults defaults;
    CallModeSettings(true, 0.25, {}).save(defaults);
    EXPECT_EQ(defaults.get<UserDefaults::Data>(key)->bytes,
              R"({"excludedApps":[],"isAutomatic":true,"level":0.25})");
    CallModeSettings().save(defaults);
    EXPECT_TRUE(defaults.keys().empty());
    EXPECT_EQ(CallModeSettings(true, 1, {"com.apple.Safari", "x"}).effectiveCallApps().size(), 24U);
}

} // namespace
} // namespace fadewell
