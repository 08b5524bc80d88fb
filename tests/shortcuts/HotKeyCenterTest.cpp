#include "shortcuts/HotKeyCenter.h"

#include "tests/shortcuts/ShortcutsFixture.h"

namespace fadewell::shortcuts {
namespace {

using Mode = HotKeyCenter::Mode;
using Type = KeyEvent::Type;
using testing::ElementsAre;
using testing::IsEmpty;

class HotKeyCenterTest : public ShortcutsFixture {
protected:
    [[nodiscard]] std::shared_ptr<HotKey> make(const Shortcut& shortcut, const std::string& what)
    {
        return std::make_shared<HotKey>(
            center(), shortcut, noting(what + " down"), noting(what + " up"));
    }
    [[nodiscard]] const std::shared_ptr<HotKeyCenter>& center() { return shortcuts_->center(); }
    void openMenu() { shortcuts_->notifications()->post("NSMenuDidBeginTrackingNotification"); }
    void closeMenu() { shortcuts_->notifications()->post("NSMenuDidEndTrackingNotification"); }

    static HotKeyEvent hotKeyEvent(std::uint32_t kind, std::uint32_t signature, std::uint32_t id)
    {
        return {.type = {kEventClassKeyboard, kind}, .directObject = {{signature, id}, noErr}};
    }
    static HotKeyEvent rawEvent(std::uint32_t kind, std::uint32_t keyCode, std::uint32_t modifiers)
    {
        return {.type = {kEventClassKeyboard, kind},
                .keyCode = {keyCode, noErr},
                .keyModifiers = {modifiers, noErr}};
    }
};

TEST_F(HotKeyCenterTest, AnOpenMenuSeesTheKeysAndEveryModeRegistersWhatItShould)
{
    onMain([this] {
        const auto hotKey = make(superM, "m");
        ASSERT_TRUE(center()->registerHotKey(hotKey));
        const struct {
            std::function<void()> change;
            Mode mode;
            bool isRegistered;
            bool isMonitored;
        } steps[] = {
            {[] {}, Mode::normal, true, false},
            {[this] { openMenu(); }, Mode::menuOpen, false, true},
            {[this] { openMenu(); }, Mode::menuOpen, false, true},
            {[this] { shortcuts_->setEnabled(false); }, Mode::disabled, false, false},
            {[this] { closeMenu(); }, Mode::disabled, false, false},
            {[this] { openMenu(); }, Mode::disabled, false, false},
            {[this] { shortcuts_->setEnabled(true); }, Mode::menuOpen, false, true},
            {[this] { closeMenu(); }, Mode::normal, true, false},
        };
        int step = 0;
        for (const auto& each : steps) {
            each.change();
            EXPECT_EQ(center()->mode(), each.mode) << step;
            EXPECT_EQ(keys_->registered().size(), each.isRegistered ? 1U : 0U) << step;
            EXPECT_EQ(keys_->eventTypes().size(), each.isRegistered ? 2U : 0U) << step;
            EXPECT_EQ(keys_->isMonitored(), each.isMonitored) << step;
            ++step;
        }
        EXPECT_TRUE(keys_->press(superM));
        EXPECT_THAT(done_, ElementsAre("m down"));
    });
}

TEST_F(HotKeyCenterTest, AHotKeyMadeWhileAMenuIsOpenComesBackWithTheMode)
{
    onMain([this] {
        openMenu();
        const auto hotKey = make(superM, "m");
        EXPECT_TRUE(center()->registerHotKey(hotKey));
        EXPECT_THAT(keys_->registered(), IsEmpty());
        EXPECT_TRUE(keys_->deliver({Type::keyDown, 46, event::command}));
        closeMenu();
        EXPECT_THAT(keys_->registered(), ElementsAre(superM));
    });
}

TEST_F(HotKeyCenterTest, KeysInAMenuMatchByCodeAndTheFiveModifiers)
{
    onMain([this] {
        const auto command = make(superM, "m");
        const auto plain = make({96, 0}, "F5");
        const auto fnDelete = make({51, classic::function}, "fn");
        const auto fnArrow = make({126, classic::function | classic::control}, "up");
        for (const auto& hotKey : {command, plain, fnDelete, fnArrow}) {
            ASSERT_TRUE(center()->registerHotKey(hotKey));
        }
        openMenu();
        const struct {
            KeyEvent event;
            const char* expected; ///< null: passed on
        } cases[] = {
            {{Type::keyDown, 46, event::command}, "m down"},
            {{Type::keyDown, 46, event::command, true}, nullptr},
            {{Type::keyUp, 46, event::command | event::capsLock | 0x108}, "m up"},
            {{Type::keyDown, 46, event::command | event::shift}, nullptr},
            {{Type::keyDown, 46, event::command | event::function}, nullptr},
            {{Type::keyDown, 96, event::function}, "F5 down"},
            {{Type::keyDown, 51, event::function}, "fn down"},
            {{Type::keyDown, 51, 0}, nullptr},
            {{Type::keyDown, 126, event::control | event::function | event::numericPad}, "up down"},
            {{Type::keyDown, {}, event::command}, nullptr},
        };
        for (const auto& [event, expected] : cases) {
            done_.clear();
            EXPECT_EQ(keys_->deliver(event), expected != nullptr) << (expected ? expected : "none");
            EXPECT_EQ(done_,
                      expected ? std::vector<std::string>{expected} : std::vector<std::string>{});
        }
    });
}

TEST_F(HotKeyCenterTest, EventsThatAreNotOursAreDeclinedAndErrorsGoBack)
{
    onMain([this] {
        const auto hotKey = make(superM, "m");
        ASSERT_TRUE(center()->registerHotKey(hotKey));
        const auto id = static_cast<std::uint32_t>(hotKey->id);
        const HotKeyEvent unreadable{.type = {kEventClassKeyboard, 5}, .directObject = {{}, -50}};
        const HotKeyEvent noModifiers{.type = {kEventClassKeyboard, 1}, .keyCode = {46, noErr}};
        const struct {
            HotKeyEvent event;
            OSStatus answer;
        } cases[] = {
            {hotKeyEvent(5, HotKeyCenter::signature, id), noErr},
            {hotKeyEvent(6, HotKeyCenter::signature, id), noErr},
            {hotKeyEvent(5, 0x4F544852, id), eventNotHandledErr},
            {hotKeyEvent(5, HotKeyCenter::signature, id + 1), eventNotHandledErr},
            {hotKeyEvent(7, HotKeyCenter::signature, id), eventNotHandledErr},
            {unreadable, -50},
            {noModifiers, eventParameterNotFoundErr},
            {rawEvent(1, 46, classic::command), noErr},
            {rawEvent(3, 46, classic::command), noErr},
            {rawEvent(1, 46, classic::shift), eventNotHandledErr},
        };
        for (const auto& [event, answer] : cases) {
            EXPECT_EQ(center()->handleEvent(&event), answer) << event.type.eventKind;
        }
        EXPECT_EQ(center()->handleEvent(nullptr), eventNotHandledErr);
        EXPECT_THAT(done_, ElementsAre("m down", "m up", "m down", "m up"));
    });
}

TEST_F(HotKeyCenterTest, SystemsWithoutMonitorsBringAMenusKeysToTheHandler)
{
    onMain([this] {
        keys_->rawKeysToHandler = true;
        const auto hotKey = make(superM, "m");
        ASSERT_TRUE(center()->registerHotKey(hotKey));
        openMenu();
        EXPECT_FALSE(keys_->isMonitored());
        const auto raw = rawEvent(kEventRawKeyDown, 46, classic::command);
        EXPECT_EQ(keys_->send(&raw), noErr);
        closeMenu();
        EXPECT_EQ(keys_->send(&raw), eventNotHandledErr);
        EXPECT_THAT(done_, ElementsAre("m down"));
    });
}

TEST_F(HotKeyCenterTest, WhatIsRefusedOrDestroyedLeavesNothing)
{
    onMain([this] {
        keys_->heldByOthers = {superM};
        for (const auto& shortcut : {superM, Shortcut{-1, 0}, Shortcut{46, 1LL << 32}}) {
            EXPECT_FALSE(center()->registerHotKey(make(shortcut, "refused")));
        }
        {
            const auto hotKey = make(altM, "m");
            EXPECT_TRUE(center()->registerHotKey(hotKey));
            EXPECT_EQ(center()->count(), 1U);
        }
        EXPECT_EQ(center()->count(), 0U);
        EXPECT_THAT(keys_->registered(), IsEmpty());
    });
}

TEST_F(HotKeyCenterTest, ACombinationLostMeanwhileIsForgottenUntilTheNextChange)
{
    const CapturedLog log;
    onMain([this] {
        shortcuts_->storeShortcut(superM, {"call"});
        shortcuts_->addKeyDownAction({"call"}, noting("call"));
        const auto other = make(altM, "m");
        other->onRegistrationFailed = noting("other failed");
        ASSERT_TRUE(center()->registerHotKey(other));
        openMenu();
        keys_->heldByOthers = {superM, altM};
        closeMenu();
        EXPECT_EQ(center()->count(), 0U);
        EXPECT_THAT(done_, ElementsAre("other failed"));
        keys_->heldByOthers.clear();
        openMenu();
        closeMenu();
        EXPECT_THAT(keys_->registered(), IsEmpty());
        shortcuts_->storeShortcut(superM, {"call"});
        EXPECT_THAT(keys_->registered(), ElementsAre(superM));
    });
}

TEST_F(HotKeyCenterTest, WithoutAHandlerTheHotKeyStaysRegisteredAndTheNextTriesAgain)
{
    const CapturedLog log;
    onMain([this] {
        keys_->refusesHandler = true;
        const auto first = make(superM, "m");
        EXPECT_TRUE(center()->registerHotKey(first));
        openMenu();
        EXPECT_THAT(keys_->registered(), ElementsAre(superM));
        EXPECT_FALSE(keys_->isMonitored());
        closeMenu();
        keys_->refusesHandler = false;
        const auto second = make(altM, "alt");
        EXPECT_TRUE(center()->registerHotKey(second));
        EXPECT_TRUE(keys_->press(superM));
        EXPECT_THAT(done_, ElementsAre("m down"));
    });
}

} // namespace
} // namespace fadewell::shortcuts
