#include "control/values/LevelArgument.h"

#include <gtest/gtest.h>

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
    const struct {
        const char* text;
        LevelArgument::Error error;
    } cases[] = {
        {"", notANumber},
        {"forty", notANumber},
        {"nan", notANumber},
        {"inf", notANumber},
        {"1e9", notANumber},
        {"0x1", notANumber},
        {"%", notANumber},
        {"+", notANumber},
        {"--10%", notANumber},
        {"4 0%", notANumber},
        {".5", notANumber},
        {"40%%", notANumber},
        {"40", outOfRange},
        {"101%", outOfRange},
        {"-150%", outOfRange},
        {"+2", outOfRange},
        {"999999999999%", outOfRange},
        {"9999999999999999999999%", notANumber},
    };
    for (const auto& [text, error] : cases) {
        const auto parsed = LevelArgument::parse(text);
        ASSERT_TRUE(std::holds_alternative<LevelArgument::Error>(parsed)) << text;
        EXPECT_EQ(std::get<LevelArgument::Error>(parsed), error) << text;
    }
}

} // namespace
} // namespace fadewell
