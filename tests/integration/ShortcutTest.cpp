// Keys pressed on a real X server, heard at the outputs.

#include "tests/integration/keyboard/ShortcutDesk.h"
#include "tests/integration/support/Await.h"
#include "tests/integration/support/SoundTest.h"

namespace fadewell::integration {
namespace {

using Key = ShortcutDesk::Key;

class ShortcutTest : public SoundTest {
protected:
    [[nodiscard]] static bool answers(std::vector<std::string> question, const char* text)
    {
        return await(
            [&] { return Fadewell::control(question).output.find(text) != std::string::npos; });
    }
};

TEST_F(ShortcutTest, TheAppInFrontGoesUpAndDownAndNoOther)
{
    ShortcutDesk desk;
    const auto player = play("pw-play", tone());
    ASSERT_TRUE(speakers_->awaitGain(0));
    ASSERT_TRUE(await([&] { return !Fadewell::appOf(player.pid()).empty(); }));
    desk.bringToFront(player.pid());
    desk.strike(Key::lower);
    desk.strike(Key::lower);
    EXPECT_TRUE(speakers_->awaitGain(decibels(0.8)));
    desk.strike(Key::raise);
    EXPECT_TRUE(speakers_->awaitGain(decibels(0.9)));

    desk.bringToFront(getpid()); // Something else that makes no sound.
    desk.strike(Key::lower);
    EXPECT_TRUE(answers({"volume", "shortcut_tests"}, "90%"));
    desk.bringToFront(player.pid());
    desk.strike(Key::lower);
    EXPECT_TRUE(speakers_->awaitGain(decibels(0.8)));
}

TEST_F(ShortcutTest, AToggleActsWhenItIsReleased)
{
    ShortcutDesk desk;
    const auto player = play("pw-play", tone());
    ASSERT_TRUE(await([&] { return !Fadewell::appOf(player.pid()).empty(); }));
    desk.bringToFront(player.pid());
    double volume = 1;
    const auto expectOnRelease = [&](Key key,
                                     std::vector<std::string> question,
                                     const char* after) {
        desk.press(key);
        desk.strike(Key::lower);
        volume -= 0.1;
        EXPECT_TRUE(speakers_->awaitGain(decibels(volume))); // So the press has been taken as well.
        EXPECT_EQ(Fadewell::control(question).output.find(after), std::string::npos);
        desk.release(key);
        EXPECT_TRUE(answers(question, after));
    };
    expectOnRelease(Key::toggleMicrophone, {"microphone"}, ": off (muted)");
    expectOnRelease(Key::toggleCallMode, {"call-mode"}, "Call mode: on");
}

TEST_F(ShortcutTest, AnOpenMenuHasTheKeysAndGivesThemBack)
{
    constexpr int escape = 9;
    constexpr int tab = 23;
    constexpr int space = 65;
    ShortcutDesk desk(Fadewell::Windows::onDisplay);
    const auto player = play("pw-play", tone());
    ASSERT_TRUE(await([&] { return !Fadewell::appOf(player.pid()).empty(); }));
    desk.bringToFront(player.pid());
    ASSERT_EQ(Fadewell::control({"show"}).code, 0);
    ASSERT_TRUE(await([&] { return desk.hasFocus(); }));
    EXPECT_FALSE(desk.isFree(Key::lower));
    desk.type({tab, space}); // The panel's menu.
    EXPECT_TRUE(await([&] { return desk.isFree(Key::lower); }));
    desk.strike(Key::lower);
    EXPECT_TRUE(speakers_->awaitGain(decibels(0.9)));
    desk.strike(Key::toggleMicrophone);
    EXPECT_TRUE(answers({"microphone"}, ": off (muted)"));
    desk.type({escape});
    EXPECT_TRUE(await([&] { return !desk.isFree(Key::lower); }));
    desk.strike(Key::lower);
    EXPECT_TRUE(speakers_->awaitGain(decibels(0.8)));
}

} // namespace
} // namespace fadewell::integration
