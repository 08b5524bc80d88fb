#include "core/Linger.h"

#include <gtest/gtest.h>
#include <string>

namespace fadewell {
namespace {

using Keys = std::set<std::string>;

TEST(LingerTest, KeepsAKeyForTheDurationAfterItsLastActivity)
{
    Linger<std::string> linger(3.0);
    EXPECT_EQ(linger.update({}, 9.0), Keys{});
    EXPECT_EQ(linger.update({"a"}, 10.0), Keys{"a"});
    EXPECT_EQ(linger.update({"a"}, 12.0), Keys{"a"});
    EXPECT_EQ(linger.update({"b"}, 14.75), (Keys{"a", "b"}));
    EXPECT_EQ(linger.nextExpiry({}), 15.0);
    EXPECT_EQ(linger.nextExpiry({"a"}), 17.75);
    EXPECT_FALSE(linger.nextExpiry({"a", "b"}));
    EXPECT_EQ(linger.update({}, 15.0), Keys{"b"}); // Strictly less than the duration.
}

} // namespace
} // namespace fadewell
