#include "ui/shortcuts/RecorderField.h"

#include "shortcuts/SpecialKey.h"
#include "tests/shortcuts/ShortcutsFixture.h"
#include "ui/shortcuts/ShortcutNames.h"

namespace fadewell {
namespace {

using namespace shortcuts;

class RecorderFieldTest : public ShortcutsFixture {};

TEST_F(RecorderFieldTest, ShortcutsAreReadOutWithTheSystemsOwnNamesInTheOrderOfTheSymbols)
{
    constexpr auto all =
        classic::command | classic::shift | classic::option | classic::control | classic::function;
    const struct {
        Shortcut shortcut;
        const char* freeDesktop;
        const char* mac;
    } cases[] = {
        {{46, all}, "Ctrl+Alt+Shift+Super+Fn+M", "Control+Option+Shift+Command+Fn+M"},
        {{keyCode(SpecialKey::space), classic::command}, "Super+Space", "Command+Space"},
        {{keyCode(SpecialKey::leftArrow), classic::option}, "Alt+Left Arrow", "Option+Left Arrow"},
        {{keyCode(SpecialKey::f5), 0}, "F5", "F5"},
        {{keyCode(SpecialKey::keypad7), classic::control}, "Ctrl+Keypad 7", "Control+Keypad 7"},
        {{keyCode(SpecialKey::keypadEnter), 0}, "Keypad Enter", "Keypad Enter"},
    };
    keys_->characters = {{46, "m"}};
    onMain([&] {
        for (const auto& each : cases) {
            EXPECT_EQ(spokenShortcut(each.shortcut, *keys_, PlatformTexts::System::freeDesktop),
                      each.freeDesktop);
            EXPECT_EQ(spokenShortcut(each.shortcut, *keys_, PlatformTexts::System::mac), each.mac);
        }
    });
}

TEST_F(RecorderFieldTest, OnlyTheSecondButtonOfAWarningAccepts)
{
    const struct {
        int button;
        bool isAccepted;
    } cases[] = {{0, false}, {1, true}};
    for (const auto& each : cases) {
        onMain([&] {
            keys_->characters = {{46, "m"}};
            keys_->heldByOthers = {superM};
            RecorderField field(shortcuts_, Name{"call"}, "Call", nullptr);
            int dropped = 0;
            QObject::connect(&field, &RecorderField::keyboardDropped, [&] { ++dropped; });
            field.begin();
            keys_->deliver({KeyEvent::Type::keyDown, 46, event::command});
            ASSERT_TRUE(field.isAsking());
            EXPECT_EQ(field.alertButtons().size(), 2);
            field.end(); // The question takes the keyboard.
            field.answer(each.button);
            EXPECT_FALSE(field.isAsking());
            EXPECT_EQ(field.text(), each.isAccepted ? "⌘m" : "");
            EXPECT_EQ(field.spokenText(), each.isAccepted ? "Super+M" : "");
            EXPECT_EQ(dropped, each.isAccepted ? 1 : 0);
            field.clear();
            EXPECT_FALSE(field.showsCancelButton());
        });
    }
}

TEST_F(RecorderFieldTest, TheMenusOwnCombinationsAreRefused)
{
    onMain([&] {
        keys_->characters = {{12, "q"}};
        RecorderField field(shortcuts_, Name{"call"}, "Call", nullptr);
        field.begin();
        keys_->deliver({KeyEvent::Type::keyDown, 12, event::control});
        EXPECT_TRUE(field.alertMessage().contains("Quit Fadewell"));
        field.answer(1); // A button that isn't there.
        EXPECT_EQ(field.text(), "");
    });
}

} // namespace
} // namespace fadewell
