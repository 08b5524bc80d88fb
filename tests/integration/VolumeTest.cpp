// The volume, mute and output that are chosen for an app are what its outputs play, for every
// player.

#include "tests/integration/support/Await.h"
#include "tests/integration/support/FadewellTest.h"

#include <algorithm>
#include <fmt/format.h>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;

/// The tone's own largest step, and what a linear fade over 10 ms adds to it. A volume's ramp adds
/// less.
constexpr double largestStepOfAFade = 1.0 + 48'000 / (2 * 3.14159 * 100) / 480;

std::string percent(double volume)
{
    return fmt::format("{:.0f}%", volume * 100);
}

class VolumeTest : public FadewellTest, public testing::WithParamInterface<const char*> {
protected:
    /// What the output plays while an untouched app goes to 40%; again when the recording has gaps.
    [[nodiscard]] Sound firstTouch(const std::string& app)
    {
        Sound sound;
        for (int attempt = 0; attempt < 3; ++attempt) {
            command({"forget", app});
            EXPECT_TRUE(speakers_->awaitGain(0));
            const auto start = speakers_->now();
            command({"volume", app, "40%"});
            EXPECT_TRUE(speakers_->awaitGain(decibels(0.4)));
            sound = speakers_->readUntilNow(start);
            if (sound.isComplete) {
                break;
            }
        }
        return sound;
    }
};

TEST_P(VolumeTest, IsTheGainAtTheOutput)
{
    auto player = playTone(GetParam());
    const auto app = appOf(player);
    for (const double volume : {0.4, 0.1, 0.75}) {
        command({"volume", app, percent(volume)});
        expectGain(*speakers_, decibels(volume));
    }
    command({"volume", app, "100%"});
    expectGain(*speakers_, 0);
    EXPECT_TRUE(headphones_->readUntilNow(0).isDigitalSilence());
}

TEST_P(VolumeTest, FirstTouchDoesNotClick)
{
    auto player = playTone(GetParam());
    const auto sound = firstTouch(appOf(player));
    // Now and then a cycle begins while the session manager links the stream anew, and is silent,
    // for a Pulse client two (docs/decisions/5-holes-of-one-cycle.md). Apart from that hole nothing
    // may show.
    const auto parts = partsBetweenHoles(sound, 64);
    EXPECT_LE(parts.size(), 2U);
    for (const auto& part : parts) {
        EXPECT_LE(largestStep(part), largestStepOfAFade) << measuringNote(sound);
    }
    EXPECT_LE(std::count(sound.left.begin(), sound.left.end(), 0.0F), 2100)
        << "longer than two cycles";
}

TEST_P(VolumeTest, StepsAndMuteDoNotClick)
{
    auto player = playTone(GetParam());
    const auto app = appOf(player);
    command({"volume", app, "40%"});
    ASSERT_TRUE(speakers_->awaitGain(decibels(0.4)));
    const auto start = speakers_->now();
    for (const double volume : {1.0, 0.05, 0.9}) {
        command({"volume", app, percent(volume)});
        ASSERT_TRUE(speakers_->awaitGain(decibels(volume)));
    }
    command({"mute", app, "on"});
    ASSERT_TRUE(speakers_->awaitSilence());
    command({"mute", app, "off"});
    ASSERT_TRUE(speakers_->awaitGain(decibels(0.9)));
    const auto sound = speakers_->readUntilNow(start);
    EXPECT_LE(largestStep(sound), largestStepOfAFade) << measuringNote(sound);
}

TEST_P(VolumeTest, OutputPlaysThereAndOnlyThereAndMovesWithoutAClick)
{
    auto player = playTone(GetParam());
    const auto app = appOf(player);
    command({"volume", app, "40%"});
    ASSERT_TRUE(speakers_->awaitGain(decibels(0.4)));

    const auto speakersStart = speakers_->now();
    const auto headphonesStart = headphones_->now();
    command({"output", app, headphones});
    expectGain(*headphones_, decibels(0.4));
    ASSERT_TRUE(speakers_->awaitSilence());
    const auto left = speakers_->readUntilNow(speakersStart);
    const auto entered = headphones_->readUntilNow(headphonesStart);
    EXPECT_LE(largestStep(left), largestStepOfAFade) << measuringNote(left);
    EXPECT_LE(largestStep(entered), largestStepOfAFade) << measuringNote(entered);

    command({"output", app, "system"});
    expectGain(*speakers_, decibels(0.4));
    EXPECT_TRUE(headphones_->awaitSilence());
}

INSTANTIATE_TEST_SUITE_P(Players, VolumeTest, testing::ValuesIn(players));

class OtherProgramTest : public FadewellTest {};

TEST_F(OtherProgramTest, IsBitExactWhileAnotherAppIsChanged)
{
    auto app = playTone("mpv");
    const auto id = appOf(app);
    const auto start = headphones_->now();
    auto other = play("pw-play", counter(), headphones);
    ASSERT_TRUE(await([&] { return !headphones_->readUntilNow(start).isDigitalSilence(); }));
    const auto touched = headphones_->now();
    command({"volume", id, "40%"});
    ASSERT_TRUE(speakers_->awaitGain(decibels(0.4)));
    command({"mute", id, "on"});
    ASSERT_TRUE(speakers_->awaitSilence());
    command({"forget", id});
    ASSERT_TRUE(speakers_->awaitGain(0));
    const auto check = counted.check(headphones_->readUntilNow(start), 1);
    EXPECT_TRUE(check.isExact());
    EXPECT_GT(check.heard, headphones_->now() - touched - frames(100ms));
}

} // namespace
} // namespace fadewell::integration
