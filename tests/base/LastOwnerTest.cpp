#include "base/LastOwner.h"

#include <gtest/gtest.h>

namespace fadewell {
namespace {

TEST(LastOwnerTest, TheObjectGoesWithItHoweverLongAnotherOneKeepsIt)
{
    for (const int pausesOfOther : {0, 1, 2999, 5000}) {
        bool isThere = true;
        auto other = std::shared_ptr<int>(new int, [&](const int* object) {
            isThere = false;
            delete object;
        });
        int pauses = 0;
        {
            const LastOwner owner(other, [&] {
                if (++pauses == pausesOfOther) {
                    other = nullptr;
                    EXPECT_TRUE(isThere) << "nobody else destroys it";
                }
            });
            if (pausesOfOther == 0) {
                other = nullptr;
            }
        }
        const bool isForGood = pausesOfOther == 5000;
        EXPECT_EQ(isThere, isForGood) << pausesOfOther;
        EXPECT_EQ(pauses, isForGood ? 3000 : pausesOfOther);
    }
}

} // namespace
} // namespace fadewell
