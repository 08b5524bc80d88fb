// What is remembered is applied again, and what ends leaves the sound as it was.

#include "tests/integration/support/Await.h"
#include "tests/integration/support/FadewellTest.h"

#include <csignal>
#include <cstring>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;

class LifecycleTest : public FadewellTest {
protected:
    void restart()
    {
        ASSERT_EQ(fadewell_->end(SIGTERM), 0) << fadewell_->log();
        fadewell_.emplace();
    }
};

TEST_F(LifecycleTest, VolumeIsRememberedOverRestartsOfThePlayerAndOfFadewell)
{
    std::string app;
    {
        auto player = playTone(PlayerKind::mpv);
        app = appOf(player);
        command({"volume", app, "40%"});
        expectGain(*speakers_, decibels(0.4));
    }
    ASSERT_TRUE(speakers_->awaitSilence());
    {
        auto player = playTone(PlayerKind::mpv, decibels(0.4));
        EXPECT_EQ(appOf(player), app);
        restart();
        expectGain(*speakers_, decibels(0.4));
    }
    ASSERT_TRUE(speakers_->awaitSilence());
    command({"volume", app, "20%"}); // while it doesn't run
    restart();
    auto player = playTone(PlayerKind::mpv, decibels(0.2));
    command({"forget", app});
    expectGain(*speakers_, 0);
}

TEST_F(LifecycleTest, OutputAndMuteAreRememberedToo)
{
    std::string app;
    {
        auto player = playTone(PlayerKind::pwPlay);
        app = appOf(player);
        command({"output", app, headphones});
        command({"mute", app, "on"});
        ASSERT_TRUE(speakers_->awaitSilence());
    }
    restart();
    auto player = play(PlayerKind::pwPlay, tone());
    ASSERT_TRUE(await([&] { return appOf(player) == app; }));
    ASSERT_TRUE(headphones_->awaitSilence());
    command({"mute", app, "off"});
    expectGain(*headphones_, 0);
    EXPECT_TRUE(speakers_->awaitSilence());
}

TEST_F(LifecycleTest, SecondStartDisturbsNothing)
{
    auto player = playTone(PlayerKind::pwPlay);
    command({"volume", appOf(player), "40%"});
    ASSERT_TRUE(speakers_->awaitGain(decibels(0.4)));
    const auto start = speakers_->now();
    ChildProcess second({FADEWELL_PROGRAMS "/fadewell", "--headless"});
    EXPECT_TRUE(second.wait()) << "two at once";
    EXPECT_NEAR(toneGain(speakers_->read(start, frames(500ms))), decibels(0.4), 0.02);
}

class EndTest : public FadewellTest, public testing::WithParamInterface<int> {};

TEST_P(EndTest, LeavesTheAppAtFullVolumeAndNothingBehind)
{
    auto native = playTone(PlayerKind::pwPlay);
    const auto app = appOf(native);
    command({"volume", app, "40%"});
    command({"output", app, headphones});
    expectGain(*headphones_, decibels(0.4));

    EXPECT_EQ(fadewell_->end(GetParam()), GetParam() == SIGKILL ? -SIGKILL : 0) << fadewell_->log();
    expectGain(*speakers_, 0);
    EXPECT_TRUE(headphones_->awaitSilence());
    EXPECT_TRUE(await([] { return Session::nodesContaining("fadewell").empty(); }));

    fadewell_.emplace();
    expectGain(*headphones_, decibels(0.4));
}

INSTANTIATE_TEST_SUITE_P(Signals,
                         EndTest,
                         testing::Values(SIGTERM, SIGINT, SIGHUP, SIGKILL),
                         [](const auto& test) { return std::string(sigabbrev_np(test.param)); });

} // namespace
} // namespace fadewell::integration
