#include "shortcuts/Recorder.h"

#include "tests/shortcuts/ShortcutsFixture.h"

namespace fadewell::shortcuts {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A field that answers every alert with the next of its answers, or keeps the question.
class ScriptedHost final : public RecorderHost {
public:
    void present(const Alert& alert, std::function<void(int)> answered) override
    {
        alerts.push_back(alert.message);
        buttons = alert.buttons.size();
        if (answer) {
            answered(*answer);
        } else {
            waiting = std::move(answered);
        }
    }
    void clearFirstResponder() override { ++cleared; }
    [[nodiscard]] std::vector<MenuItem> mainMenu() const override { return menu; }

    std::vector<MenuItem> menu;
    std::optional<int> answer = alertFirstButton;
    std::function<void(int)> waiting;
    std::vector<std::string> alerts;
    std::size_t buttons = 0;
    int cleared = 0;
};

class RecorderTest : public ShortcutsFixture {
protected:
    RecorderTest()
    {
        keys_->characters = {{46, "m"}, {12, "q"}, {0, "a"}};
        options_.shortcutName = {"call"};
    }

    ~RecorderTest() override
    {
        onMain([this] { recorder_.reset(); });
    }

    void record()
    {
        recorder_ = Recorder::create(shortcuts_, host_, options_, Messages("en"));
        ASSERT_TRUE(recorder_->becomeFirstResponder());
    }

    bool strike(std::uint16_t keyCode, std::uint32_t flags, int functionKey = 0)
    {
        return keys_->deliver({KeyEvent::Type::keyDown, keyCode, flags, false, functionKey});
    }

    ScriptedHost host_;
    Recorder::Options options_;
    std::shared_ptr<Recorder> recorder_;
};

TEST_F(RecorderTest, WhatCountsAsACombination)
{
    const struct {
        std::uint16_t keyCode;
        std::uint32_t flags;
        int functionKey;
        std::optional<Shortcut> expected;
        bool isRecording;
    } cases[] = {
        {46, event::command, 0, Shortcut{46, classic::command}, false},
        {46, event::option | event::shift | event::capsLock, 0, Shortcut{46, 0xA00}, false},
        {46, 0, 0, {}, true},
        {46, event::shift | event::capsLock | event::numericPad | event::function, 0, {}, true},
        {96, event::function, 5, Shortcut{96, classic::function}, false},
        {96, 0, 5, Shortcut{96, 0}, false},
        {53, event::command, 0, {}, false}, // escape, whatever is held with it
        {55, event::command, 0, {}, true},  // the command key itself
        {123, 0, 0, {}, true},              // an arrow is no function key
    };
    for (const auto& each : cases) {
        onMain([&] {
            record();
            strike(each.keyCode, each.flags, each.functionKey);
            EXPECT_EQ(shortcuts_->shortcut({"call"}), each.expected) << each.keyCode;
            EXPECT_EQ(recorder_->isRecording.get(), each.isRecording) << each.keyCode;
            recorder_.reset();
            shortcuts_->storeShortcut(std::nullopt, {"call"});
        });
    }
}

TEST_F(RecorderTest, WhileItRecordsNoHotKeyIsLive)
{
    onMain([this] {
        std::vector<bool> told;
        const auto observer = shortcuts_->notifications()->observe(
            "KeyboardShortcuts_recorderActiveStatusDidChange",
            [&](const auto& info) { told.push_back(std::get<bool>(info.at("isActive"))); });
        shortcuts_->storeShortcut(superM, {"call"});
        shortcuts_->addKeyDownAction({"call"}, noting("call"));
        options_.onChange = [this](const auto& changed) {
            done_.push_back(changed ? "changed" : "cleared");
        };
        record();
        EXPECT_EQ(recorder_->text.get(), "⌘m");
        EXPECT_TRUE(recorder_->showsCancelButton.get());
        EXPECT_THAT(keys_->registered(), IsEmpty());
        EXPECT_TRUE(strike(46, event::control));
        EXPECT_EQ(recorder_->text.get(), "⌃m");
        EXPECT_EQ(host_.cleared, 1);
        EXPECT_THAT(keys_->registered(), ElementsAre(Shortcut{46, classic::control}));
        EXPECT_FALSE(strike(46, event::command));

        recorder_->clear();
        EXPECT_FALSE(recorder_->showsCancelButton.get());
        EXPECT_EQ(recorder_->text.get(), "");
        EXPECT_THAT(done_, ElementsAre("changed", "cleared"));
        shortcuts_->storeShortcut(superM, {"call"});
        EXPECT_EQ(recorder_->text.get(), "⌘m");
        keys_->changeLayout({{46, "ь"}});
        EXPECT_EQ(recorder_->text.get(), "⌘ь");
        EXPECT_THAT(told, ElementsAre(true, false));
    });
}

TEST_F(RecorderTest, TheNewestRecorderIsTheActiveOne)
{
    onMain([this] {
        record();
        const auto first = recorder_;
        record();
        first->endRecording();
        EXPECT_EQ(shortcuts_->center()->mode(), HotKeyCenter::Mode::disabled);
        recorder_.reset(); // A field that goes away ends its recording.
        EXPECT_EQ(shortcuts_->center()->mode(), HotKeyCenter::Mode::normal);
        first->canBecomeKey = false;
        EXPECT_FALSE(first->becomeFirstResponder());
    });
}

TEST_F(RecorderTest, ConflictsAreJudgedInTheirOrderAndByThePolicy)
{
    using enum ConflictBehavior;
    const std::string menu = Messages("en").text("keyboard_shortcut_used_by_menu_item", "Quit");
    const std::string system = Messages("en").text("keyboard_shortcut_used_by_system");
    const struct {
        ConflictPolicy policy;
        std::optional<int> answer;
        std::vector<std::string> alerts;
        bool isAccepted;
    } cases[] = {
        {{block, warn, block}, alertSecondButton, {menu}, false},
        {{warn, warn, block}, alertFirstButton, {menu}, false},
        {{warn, warn, block}, 1002, {menu}, false},
        {{warn, block, block}, alertSecondButton, {menu, system}, false},
        {{warn, warn, block}, alertSecondButton, {menu, system, "Not this one"}, false},
        {{allow, allow, block}, alertFirstButton, {"Not this one"}, false},
    };
    for (const auto& each : cases) {
        onMain([&] {
            host_.menu = {{.title = "File", .submenu = {{"Quit", "Q", event::control}}}};
            keys_->system = {{12, classic::control | classic::shift | 0x4}};
            options_.conflictPolicy = each.policy;
            options_.validateShortcut = [](const auto&) {
                return ValidationResult::disallow("Not this one");
            };
            host_.answer = each.answer;
            host_.alerts.clear();
            record();
            EXPECT_TRUE(strike(12, event::control | event::shift));
            EXPECT_EQ(host_.alerts, each.alerts);
            EXPECT_EQ(shortcuts_->shortcut({"call"}).has_value(), each.isAccepted);
            EXPECT_TRUE(recorder_->isRecording.get());
        });
    }
}

TEST_F(RecorderTest, AForcedShortcutIsStoredAfterTheAnswerAndThenAsksNoMoreOfTheMenu)
{
    onMain([this] {
        host_.menu = {{"Quit", "q", event::control}};
        host_.answer.reset();
        options_.conflictPolicy.menuItem = ConflictBehavior::warn;
        record();
        strike(12, event::control);
        EXPECT_EQ(host_.buttons, 2U);
        EXPECT_FALSE(strike(46, event::control)); // The alert's own keys.
        recorder_->endRecording();                // The alert takes the keyboard.
        EXPECT_EQ(shortcuts_->shortcut({"call"}), std::nullopt);
        host_.waiting(alertSecondButton);
        EXPECT_EQ(shortcuts_->shortcut({"call"}), (Shortcut{12, classic::control}));
        host_.alerts.clear();
        recorder_->becomeFirstResponder();
        strike(12, event::control);
        EXPECT_THAT(host_.alerts, IsEmpty());
        EXPECT_FALSE(recorder_->isRecording.get());
    });
}

TEST_F(RecorderTest, ASandboxOfVersionFifteenRefusesOptionAlone)
{
    const struct {
        Recorder::System system;
        std::uint32_t flags;
        ConflictBehavior behavior;
        bool isAccepted;
    } cases[] = {
        {{15, true}, event::option, ConflictBehavior::block, false},
        {{15, true}, event::option | event::shift, ConflictBehavior::warn, false},
        {{15, true}, event::option, ConflictBehavior::allow, true},
        {{15, true}, event::option | event::command, ConflictBehavior::block, true},
        {{15, true}, event::option | event::capsLock, ConflictBehavior::block, true},
        {{15, false}, event::option, ConflictBehavior::block, true},
        {{14, true}, event::option, ConflictBehavior::block, true},
        {{16, true}, event::option, ConflictBehavior::block, true},
    };
    for (const auto& each : cases) {
        onMain([&] {
            host_.alerts.clear();
            host_.answer = alertSecondButton;
            options_.system = each.system;
            options_.conflictPolicy.disallowed = each.behavior;
            record();
            strike(0, each.flags);
            EXPECT_EQ(shortcuts_->shortcut({"call"}).has_value(), each.isAccepted);
            EXPECT_EQ(host_.alerts.empty(), each.isAccepted);
            shortcuts_->storeShortcut(std::nullopt, {"call"});
        });
    }
}

TEST_F(RecorderTest, ABindingKeepsItsShortcutWithTheCaller)
{
    onMain([this] {
        options_.storageMode = Recorder::StorageMode::binding;
        options_.bindingShortcut = altM;
        std::optional<Shortcut> seen;
        options_.onChange = [&](const auto& changed) {
            seen = changed;
        };
        keys_->heldByOthers = {superM};
        host_.answer = alertSecondButton;
        record();
        EXPECT_EQ(recorder_->text.get(), "⌥m");
        strike(46, event::command);
        EXPECT_EQ(seen, superM);
        EXPECT_EQ(recorder_->shortcut(), superM);
        EXPECT_THAT(host_.alerts, testing::SizeIs(1));
        EXPECT_THAT(defaults_->keys(), IsEmpty());
    });
}

} // namespace
} // namespace fadewell::shortcuts
