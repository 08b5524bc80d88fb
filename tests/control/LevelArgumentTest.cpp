#include "control/values/LevelArgument.h"

#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace fadewell {
namespace {

TEST(LevelArgumentTest, ReadsPercentagesFractionsAndChanges)
{
    const struct {
        const char* text;
        LevelArgument expected;
    } cases[] = {
        {"40%", {0.4, false}},
        {"0%", {0, false}},
        {"100%", {1, false}},
        {"0.4", {0.4, false}},
        {"0,4", {0.4, false}},
        {"1", {1, false}},
        {"1%", {0.01, false}},
        {"+10%", {0.1, true}},
        {"-10%", {-0.1, true}},
        {"-0.1", {-0.1, true}},
        {"+100%", {1, true}},
        {"12.5%", {0.125, false}},
        {" 40 % ", {0.4, false}},
        {"40\u00a0%", {0.4, false}},
        {"-0%", {0, true}},
    };
    for (const auto& [text, expected] : cases) {
        const auto parsed = LevelArgument::parse(text);
        ASSERT_TRUE(std::holds_alternative<LevelArgument>(parsed)) << text;
        EXPECT_DOUBLE_EQ(std::get<LevelArgument>(parsed).value, expected.value) << text;
        EXPECT_EQ(std::get<LevelArgument>(parsed).isRelative, expected.isRelative) << text;
    }
}

TEST(LevelArgumentTest, RefusesEverythingElse)
{
    using enum LevelArgument::Error;
    const std::pair<LevelArgument::Error, std::vector<const char*>> cases[] = {
        {notANumber, {"", "forty", "nan", "inf", "1e9", "0x1", "%", "+", "--10%", "4 0%", ".5"}},
        {notANumber, {"40%%", "9999999999999999999999%"}},
        {outOfRange, {"40", "101%", "-150%", "+2", "999999999999%"}},
    };
    for (const auto& [error, texts] : cases) {
        for (const char* text : texts) {
            const auto parsed = LevelArgument::parse(text);
            ASSERT_TRUE(std::holds_alternative<LevelArgument::Error>(parsed)) << text;
            EXPECT_EQ(std::get<LevelArgument::Error>(parsed), error) << text;
        }
    }
}

} // namespace
} // namespace fadewell
