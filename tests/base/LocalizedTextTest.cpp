#include "base/LocalizedText.h"

#include "base/Uuid.h"

#include <gtest/gtest.h>
#include <regex>

namespace fadewell {
namespace {

TEST(LocalizedTextTest, OrdersDigitsByValueAndIgnoresCase)
{
    EXPECT_LT(localizedStandardCompare("App 2", "App 10"), 0);
    EXPECT_LT(localizedStandardCompare("apple", "Banana"), 0);
    EXPECT_EQ(localizedStandardCompare("MUSIC", "music"), 0);
    EXPECT_GT(localizedStandardCompare("\xff broken", "zebra"), 0)
        << "broken UTF-8 still has its place";
}

TEST(LocalizedTextTest, FormatsWholePercentages)
{
    EXPECT_EQ(localizedPercent(0.7), "70%");
    EXPECT_EQ(localizedPercent(1.0), "100%");
}

TEST(UuidTest, IsRandomUpperCaseVersionFour)
{
    const auto uuid = makeUUID();
    EXPECT_TRUE(std::regex_match(
        uuid, std::regex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}")));
    EXPECT_NE(uuid, makeUUID());
}

} // namespace
} // namespace fadewell
