#include "ui/about/AboutCredits.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace fadewell {
namespace {

TEST(AboutCreditsTest, HoldTheWholeLicenceUnderTheNameOfTheLibrary)
{
    const auto credits = AboutCredits::current();
    EXPECT_EQ(credits.heading, "Acknowledgements");
    const auto paragraphs = credits.notice.split("\n\n");
    ASSERT_EQ(paragraphs.size(), 4);
    const auto names = paragraphs[0].split('\n');
    ASSERT_EQ(names.size(), 2) << "the library's name, then the copyright line";
    EXPECT_EQ(names[0], "KeyboardShortcuts");
    EXPECT_TRUE(names[1].startsWith("Copyright (c) "));
    EXPECT_TRUE(paragraphs[1].startsWith("Permission is hereby granted"));
    EXPECT_TRUE(paragraphs[2].startsWith("The above copyright notice"));
    EXPECT_TRUE(paragraphs[3].startsWith("THE SOFTWARE IS PROVIDED \"AS IS\""));
    EXPECT_TRUE(paragraphs[3].endsWith("DEALINGS IN THE SOFTWARE."));
    EXPECT_FALSE(paragraphs[1].contains('\n')) << "breaks where the window does";
}

} // namespace
} // namespace fadewell
