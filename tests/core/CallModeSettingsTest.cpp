#include "core/CallModeSettings.h"

#include "base/LenientJson.h"
#include "base/MemoryUserDefaults.h"
#include "core/KnownCallApps.h"

#include <gtest/gtest.h>
#include <limits>

namespace fadewell {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr const char* key = CallModeSettings::defaultKey;

TEST(CallModeSettingsTest, ClampsEveryAssignedLevel)
{
    const struct {
        double assigned;
        double kept;
    } cases[] = {{0.4, 0.4}, {-1, 0}, {7, 1}, {nan, 0.2}, {infinity, 0.2}, {-infinity, 0.2}};
    for (const auto& [assigned, kept] : cases) {
        CallModeSettings settings(true, 0.5, {});
        settings.setLevel(assigned);
        EXPECT_EQ(settings.level(), kept) << assigned;
        EXPECT_EQ(CallModeSettings(true, assigned, {}).level(), kept) << assigned;
    }
}

TEST(CallModeSettingsTest, LoadsMemberByMemberAndWritesNothing)
{
    const struct {
        const char* text;
        CallModeSettings settings;
    } cases[] = {
        {R"({"isAutomatic":false})", {false, 0.2, {}}},
        {R"({"level":7,"more":{}})", {true, 1.0, {}}},
        {R"({"level":1e400,"isAutomatic":false})", {false, 0.2, {}}},
        {R"({"isAutomatic":0,"level":"1","excludedApps":"a"})", {}},
        {R"({"isAutomatic":null,"level":null,"excludedApps":null})", {}},
        {R"({"level":0.5,"excludedApps":["a",1]})", {true, 0.5, {}}},
        {R"({"excludedApps":["b","a","b"]})", {true, 0.2, {"a", "b"}}},
        {R"([false])", {}},
        {R"(no JSON)", {}},
    };
    for (const auto& [text, settings] : cases) {
        MemoryUserDefaults defaults;
        defaults.set(key, UserDefaults::Data{text});
        EXPECT_EQ(CallModeSettings::load(defaults), settings) << text;
        EXPECT_EQ(defaults.get<UserDefaults::Data>(key)->bytes, text);
    }
    EXPECT_EQ(CallModeSettings::load(MemoryUserDefaults()), CallModeSettings());
}

TEST(CallModeSettingsTest, SavesAllMembersButNeverTheDefault)
{
    MemoryUserDefaults defaults;
    CallModeSettings(true, 0.25, {}).save(defaults);
    EXPECT_EQ(defaults.get<UserDefaults::Data>(key)->bytes,
              R"({"excludedApps":[],"isAutomatic":true,"level":0.25})");
    const CallModeSettings settings(false, 0.1, {"com.apple.Safari", "x"});
    settings.save(defaults);
    EXPECT_EQ(CallModeSettings::load(defaults), settings);
    CallModeSettings().save(defaults);
    EXPECT_TRUE(defaults.keys().empty());
}

TEST(CallModeSettingsTest, ExcludesOnlyKnownApps)
{
    EXPECT_EQ(KnownCallApps::callApps().size(), 16U);
    EXPECT_EQ(KnownCallApps::browsers().size(), 9U);
    EXPECT_EQ(CallModeSettings().effectiveCallApps().size(), 25U);
    const auto apps = CallModeSettings(true, 0.2, {"com.apple.Safari", "x"}).effectiveCallApps();
    EXPECT_EQ(apps.size(), 24U);
    EXPECT_FALSE(apps.contains("com.apple.Safari"));
}

} // namespace
} // namespace fadewell
