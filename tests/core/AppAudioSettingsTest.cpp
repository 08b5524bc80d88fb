#include "core/AppAudioSettings.h"

#include "base/LenientJson.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace fadewell {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

AppAudioSettings decoded(const std::string& text)
{
    const auto json = parseJson(text);
    const auto settings = json ? AppAudioSettings::fromJson(*json) : std::nullopt;
    return settings.value_or(AppAudioSettings(0.123, true, "unreadable", {}));
}

TEST(AppAudioSettingsTest, ClampsEveryAssignedVolume)
{
    const struct {
        double assigned;
        double kept;
    } cases[] = {{0.4, 0.4}, {-0.3, 0}, {0, 0}, {2.5, 1}, {nan, 1}, {infinity, 1}, {-infinity, 1}};
    for (const auto& [assigned, kept] : cases) {
        AppAudioSettings settings(0.5, false, {}, {});
        settings.setVolume(assigned);
        EXPECT_EQ(settings.volume(), kept) << assigned;
        EXPECT_EQ(AppAudioSettings(assigned, false, {}, {}).volume(), kept) << assigned;
    }
}

TEST(AppAudioSettingsTest, MutedKeepsTheVolumeForLater)
{
    AppAudioSettings settings(0.8, true, {}, {});
    EXPECT_EQ(settings.effectiveVolume(), 0);
    settings.isMuted = false;
    EXPECT_EQ(settings.effectiveVolume(), 0.8);
}

TEST(AppAudioSettingsTest, NameWithoutDeviceGoesInTheConstructorButNotInAnAssignment)
{
    AppAudioSettings settings(1, false, {}, "Speakers");
    EXPECT_FALSE(settings.outputDeviceName);
    EXPECT_TRUE(settings.isDefault());
    settings.outputDeviceName = "Speakers";
    EXPECT_FALSE(settings.isDefault());
}

TEST(AppAudioSettingsTest, DecodesMemberByMember)
{
    const struct {
        const char* text;
        AppAudioSettings settings;
    } cases[] = {
        {R"({})", {}},
        {R"({"volume":2.5})", {}},
        {R"({"volume":-0.3})", {0, false, {}, {}}},
        {R"({"volume":1e999,"isMuted":true})", {1, true, {}, {}}},
        {R"({"volume":-1e999,"x\"1e999":2})", {}},
        {R"({"volume":"0.5","isMuted":1,"outputDeviceUID":7})", {}},
        {R"({"volume":null,"isMuted":null,"outputDeviceUID":null,"outputDeviceName":"S"})", {}},
        {R"({"outputDeviceUID":"","outputDeviceName":"S"})", {}},
        {R"({"outputDeviceUID":"u","outputDeviceName":9,"new":[]})", {1, false, "u", {}}},
        {R"( {"outputDeviceName":"S", "outputDeviceUID":"u" ,"volume":0.25} )",
         {0.25, false, "u", "S"}},
    };
    for (const auto& [text, settings] : cases) {
        EXPECT_EQ(decoded(text), settings) << text;
    }
    EXPECT_FALSE(AppAudioSettings::fromJson(nlohmann::json::array()));
}

TEST(AppAudioSettingsTest, EncodesOnlyWhatIsPresentAndReadsBackTheSame)
{
    const AppAudioSettings plain(0.1 + 0.2, false, {}, {});
    EXPECT_EQ(dumpJson(plain.toJson()), R"({"isMuted":false,"volume":0.30000000000000004})");
    for (const auto& settings : {plain, AppAudioSettings(1, true, "u", "Küche")}) {
        EXPECT_EQ(decoded(dumpJson(settings.toJson())), settings);
    }
}

} // namespace
} // namespace fadewell
