#include "core/CallModeSettings.h"

#include "base/MemoryUserDefaults.h"

#include <cmath>
#include <gtest/gtest.h>

namespace fadewell {
namespace {

constexpr const char* key = CallModeSettings::defaultKey;

TEST(CallModeSettingsTest, ClampsEveryAssignedLevel)
{
    const std::pair<double, double> cases[] = {
        {0.4, 0.4}, {-1, 0}, {7, 1}, {std::nan(""), 0.2}, {HUGE_VAL, 0.2}, {-HUGE_VAL, 0.2}};
    for (const auto& [assigned, kept] : cases) {
        CallModeSettings settings(true, 0.5, {});
        settings.setLevel(assigned);
        EXPECT_EQ(settings.level(), kept) << assigned;
        EXPECT_EQ(CallModeSettings(true, assigned, {}).level(), kept) << assigned;
    }
}

TEST(CallModeSettingsTest, LoadsMemberByMemberAndWritesNothing)
{
    const std::pair<const char*, CallModeSettings> cases[] = {
        {R"({"isAutomatic":false})", {false, 0.2, {}}},
        {R"({"level":7,"more":{}})", {true, 1.0, {}}},
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
}

TEST(CallModeSettingsTest, ExcludesOnlyKnownApps)
{
    EXPECT_EQ(CallModeSettings().effectiveCallApps().size(), 25U);
    const auto apps = CallModeSettings(true, 0.2, {"com.apple.Safari", "x"}).effectiveCallApps();
    EXPECT_EQ(apps.size(), 24U);
    EXPECT_FALSE(apps.contains("com.apple.Safari"));
}

} // namespace
} // namespace fadewell
