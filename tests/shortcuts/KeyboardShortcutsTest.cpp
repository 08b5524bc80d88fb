#include "shortcuts/KeyboardShortcuts.h"

#include "tests/shortcuts/ShortcutsFixture.h"

namespace fadewell::shortcuts {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class KeyboardShortcutsTest : public ShortcutsFixture {
protected:
    /// Notes the raw value of each name whose shortcut changes.
    void watchChanges()
    {
        changes_ = shortcuts_->notifications()->observe(
            "KeyboardShortcuts_shortcutByNameDidChange", [this](const auto& info) {
                told_.push_back(std::get<Name>(info.at("name")).rawValue);
            });
    }

    std::vector<std::string> told_;
    Subscription changes_;
};

TEST_F(KeyboardShortcutsTest, OnlyATextThatDecodesIsAShortcut)
{
    const struct {
        UserDefaults::Value value;
        std::optional<Shortcut> expected;
    } cases[] = {
        {superM.encoded(), superM},
        {std::string("{}"), {}},
        {std::string("false"), {}},
        {false, {}},
        {true, {}},
        {7.0, {}},
        {UserDefaults::Data{superM.encoded()}, {}},
        {UserDefaults::NumberMap{{"carbonKeyCode", 46}, {"carbonModifiers", 256}}, {}},
    };
    for (const auto& [value, expected] : cases) {
        storeRaw("call", value);
        onMain([&, wanted = expected] {
            EXPECT_EQ(shortcuts_->shortcut({"call"}), wanted);
            shortcuts_->storeShortcut(altM, {"call"});
            EXPECT_EQ(shortcuts_->shortcut({"call"}), altM);
        });
    }
}

TEST_F(KeyboardShortcutsTest, AnInitialShortcutIsStoredOnceAndClearedForGood)
{
    onMain([this] {
        watchChanges();
        const auto name = shortcuts_->name("call", superM);
        EXPECT_EQ(stored("call"), UserDefaults::Value(superM.encoded()));
        shortcuts_->storeShortcut(altM, name);
        EXPECT_EQ(shortcuts_->shortcut(shortcuts_->name("call", superM)), altM);

        shortcuts_->storeShortcut(std::nullopt, name);
        shortcuts_->storeShortcut(std::nullopt, name);
        EXPECT_EQ(stored("call"), UserDefaults::Value(false));
        EXPECT_EQ(shortcuts_->shortcut(shortcuts_->name("call", superM)), std::nullopt);
        EXPECT_THAT(told_, ElementsAre("call", "call"));

        shortcuts_->restoreInitialShortcuts({name});
        EXPECT_EQ(shortcuts_->shortcut(name), superM);
    });
}

TEST_F(KeyboardShortcutsTest, WithoutAnInitialShortcutClearingRemovesTheEntry)
{
    onMain([this] {
        watchChanges();
        const auto name = shortcuts_->name("call");
        EXPECT_EQ(stored("call"), std::nullopt);
        shortcuts_->storeShortcut(std::nullopt, name);
        EXPECT_THAT(told_, IsEmpty());
        for (const auto& value :
             {UserDefaults::Value(superM.encoded()), UserDefaults::Value(false)}) {
            storeRaw("call", value);
            shortcuts_->restoreInitialShortcuts({name});
            EXPECT_EQ(stored("call"), std::nullopt);
        }
        EXPECT_THAT(told_, ElementsAre("call", "call"));
        storeRaw("other", false);
        EXPECT_THAT(shortcuts_->storedNames(), ElementsAre(Name{"other"}));
    });
}

TEST_F(KeyboardShortcutsTest, AnyOfTheFourHandlerListsNeedsTheHotKey)
{
    onMain([this] {
        const Name name{"call"};
        shortcuts_->storeShortcut(superM, name);
        EXPECT_THAT(keys_->registered(), IsEmpty());
        for (const auto listen : {&KeyboardShortcuts::keyDownEvents,
                                  &KeyboardShortcuts::keyUpEvents,
                                  &KeyboardShortcuts::repeatingKeyDownEvents})
        {
            auto events = (*shortcuts_.*listen)(name, noting("event"));
            EXPECT_THAT(keys_->registered(), ElementsAre(superM));
            events.cancel();
            EXPECT_THAT(keys_->registered(), IsEmpty());
        }
        shortcuts_->addKeyUpAction(name, noting("up"));
        EXPECT_THAT(keys_->registered(), ElementsAre(superM));
        shortcuts_->removeAllActions();
        EXPECT_THAT(keys_->registered(), IsEmpty());
        EXPECT_FALSE(keys_->press(superM));
        EXPECT_THAT(done_, IsEmpty());
    });
}

TEST_F(KeyboardShortcutsTest, ActionsRunInOrderOnPressAndOnRelease)
{
    onMain([this] {
        const Name name{"call"};
        shortcuts_->addKeyDownAction(name, noting("down 1"));
        shortcuts_->addKeyUpAction(name, noting("up"));
        shortcuts_->addKeyDownAction(name, noting("down 2"));
        shortcuts_->storeShortcut(superM, name);
        EXPECT_TRUE(keys_->press(superM));
        EXPECT_TRUE(keys_->release(superM));
        EXPECT_THAT(done_, ElementsAre("down 1", "down 2", "up"));
    });
}

TEST_F(KeyboardShortcutsTest, AHotKeyLivesUntilItsLastNameLetsGo)
{
    onMain([this] {
        for (const auto* raw : {"a", "b"}) {
            shortcuts_->storeShortcut(superM, {raw});
            shortcuts_->addKeyDownAction({raw}, noting(raw));
        }
        EXPECT_THAT(keys_->registered(), ElementsAre(superM));
        keys_->press(superM);
        EXPECT_THAT(done_, ElementsAre("a", "b"));

        shortcuts_->storeShortcut(altM, {"a"});
        EXPECT_THAT(keys_->registered(), UnorderedElementsAre(superM, altM));
        shortcuts_->setPaused({"b"}, true);
        EXPECT_THAT(keys_->registered(), ElementsAre(altM));
        shortcuts_->setPaused({"b"}, false);
        shortcuts_->storeShortcut(std::nullopt, {"b"});
        EXPECT_THAT(keys_->registered(), ElementsAre(altM));
        done_.clear();
        keys_->press(altM);
        EXPECT_THAT(done_, ElementsAre("a"));
    });
}

TEST_F(KeyboardShortcutsTest, AnActionMayChangeItsOwnShortcut)
{
    onMain([this] {
        const Name name{"call"};
        shortcuts_->storeShortcut(superM, name);
        shortcuts_->addKeyDownAction(name, [this, name] {
            shortcuts_->storeShortcut(std::nullopt, name);
            shortcuts_->removeAllActions();
        });
        shortcuts_->addKeyDownAction(name, noting("next"));
        EXPECT_TRUE(keys_->press(superM));
        EXPECT_THAT(done_, ElementsAre("next"));
        EXPECT_THAT(keys_->registered(), IsEmpty());
    });
}

TEST_F(KeyboardShortcutsTest, HeldKeysRepeatUntilReleased)
{
    Subscription events;
    onMain([&] {
        shortcuts_->storeShortcut(superM, {"call"});
        events = shortcuts_->repeatingKeyDownEvents({"call"}, noting("again"));
        keys_->press(superM);
    });
    time_->advance(0.45);
    EXPECT_EQ(done_.size(), 1U);
    time_->advance(0.2);
    EXPECT_EQ(done_.size(), 3U);
    onMain([this] { keys_->release(superM); });
    EXPECT_EQ(time_->pendingTasks(), 0U);
    onMain([this] {
        keys_->press(superM);
        shortcuts_->notifications()->post(notification::menuDidBeginTracking);
    });
    time_->advance(1); // Its release goes elsewhere.
    EXPECT_EQ(done_.size(), 4U);
    EXPECT_EQ(time_->pendingTasks(), 0U);
    onMain([this] { shortcuts_->notifications()->post(notification::menuDidEndTracking); });
    onMain([this] { keys_->press(superM); });
    onMain([&] { events.cancel(); });
    EXPECT_EQ(time_->pendingTasks(), 0U);
}

TEST_F(KeyboardShortcutsTest, ARefusedCombinationIsTriedAgainWithTheNextChange)
{
    CapturedLog log;
    onMain([this] {
        keys_->heldByOthers = {superM};
        shortcuts_->storeShortcut(superM, {"call"});
        shortcuts_->addKeyDownAction({"call"}, noting("call"));
        EXPECT_EQ(shortcuts_->center()->count(), 0U);
        keys_->heldByOthers.clear();
        shortcuts_->storeShortcut(superM, {"call"});
        EXPECT_TRUE(keys_->press(superM));
    });
    EXPECT_EQ(log.take().size(), 1U);
}

TEST_F(KeyboardShortcutsTest, ADesktopThatAssignsCombinationsRunsNames)
{
    onMain([this] {
        keys_->offered = HotKeyService::Support::none;
        shortcuts_->bindNamed({{"call", "Toggle Call Mode"}});
        shortcuts_->storeShortcut(superM, {"call"});
        EXPECT_THAT(keys_->bound, IsEmpty());
        keys_->changeSupport(HotKeyService::Support::portal);
        EXPECT_THAT(keys_->bound, ElementsAre(NamedBinding{"call", "Toggle Call Mode", superM}));
        shortcuts_->addKeyUpAction({"call"}, noting("up"));
        keys_->fire("call", true);
        keys_->fire("unknown", false);
        keys_->fire("call", false);
        shortcuts_->setEnabled(false);
        keys_->fire("call", false);
        EXPECT_THAT(done_, ElementsAre("up"));
    });
}

} // namespace
} // namespace fadewell::shortcuts
