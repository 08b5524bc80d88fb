// The measuring itself, without Fadewell: what the other tests conclude from it holds only if
// untouched clients measure as untouched, and faults that are put in are found.

#include "tests/integration/support/Await.h"
#include "tests/integration/support/SoundTest.h"

#include <algorithm>
#include <csignal>
#include <limits>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;

class UntouchedPlayerTest : public SoundTest, public testing::WithParamInterface<const char*> {};

TEST_P(UntouchedPlayerTest, IsHeardAsItPlaysOnTheDefaultOutputOnly)
{
    auto player = play(GetParam(), tone());
    ASSERT_TRUE(speakers_->awaitGain(0)) << player.errors();
    const auto sound = speakers_->read(speakers_->now(), frames(500ms));
    EXPECT_TRUE(sound.isComplete);
    EXPECT_NEAR(toneGain(sound), 0, 0.02);
    EXPECT_NEAR(largestStep(sound), 1, 0.01);
    EXPECT_TRUE(headphones_->readUntilNow(0).isDigitalSilence());

    player.signal(SIGKILL);
    EXPECT_TRUE(speakers_->awaitSilence());
}

INSTANTIATE_TEST_SUITE_P(Players, UntouchedPlayerTest, testing::ValuesIn(players));

class RigTest : public SoundTest {};

TEST_F(RigTest, FindsFaultsThatArePutIn)
{
    auto player = play("pw-play", tone());
    ASSERT_TRUE(speakers_->awaitGain(0)) << player.errors();
    const auto clean = speakers_->read(speakers_->now(), frames(200ms));

    auto quieter = clean;
    for (auto* channel : {&quieter.left, &quieter.right}) {
        for (auto& sample : *channel) {
            sample *= 0.995F;
        }
    }
    EXPECT_LT(toneGain(quieter), -0.04);

    auto skipping = clean;
    const auto crossing = std::find_if(skipping.right.begin() + 1,
                                       skipping.right.end() - 20,
                                       [](auto& x) { return x > 0 && *(&x - 1) <= 0; });
    skipping.right.erase(crossing, crossing + 10);
    EXPECT_GT(largestStep(skipping), 2);

    auto holed = clean;
    std::fill_n(holed.left.begin() + 4000, 1024, 0.0F);
    std::fill_n(holed.right.begin() + 4000, 1024, 0.0F);
    const auto parts = partsBetweenHoles(holed, 256);
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(parts[0].frames() + parts[1].frames(), clean.frames() - 1024);
    EXPECT_NEAR(largestStep(parts[1]), 1, 0.01);
    EXPECT_EQ(partsBetweenHoles(clean, 256).size(), 1U);

    const Sound silence{std::vector<float>(4800), std::vector<float>(4800)};
    EXPECT_EQ(toneGain(silence), -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(silence.isDigitalSilence());
}

} // namespace
} // namespace fadewell::integration
