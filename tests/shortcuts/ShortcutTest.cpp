#include "shortcuts/Shortcut.h"

#include "platform/simulated/SimulatedHotKeyService.h"
#include "shortcuts/Modifiers.h"
#include "shortcuts/ShortcutText.h"
#include "shortcuts/SpecialKey.h"

#include <gtest/gtest.h>
#include <set>

namespace fadewell::shortcuts {
namespace {

TEST(ShortcutTest, IsReadBackAsStoredAndOnlyFromBothIntegers)
{
    const struct {
        const char* json;
        std::optional<Shortcut> expected;
    } cases[] = {
        {R"({"carbonKeyCode":46,"carbonModifiers":256})", Shortcut{46, 256}},
        {R"({"extra":[],"carbonModifiers":-1,"carbonKeyCode":46.0})", Shortcut{46, -1}},
        {R"({})", {}},
        {R"({"carbonKeyCode":46})", {}},
        {R"({"carbonKeyCode":"46","carbonModifiers":0})", {}},
        {R"({"carbonKeyCode":46.5,"carbonModifiers":0})", {}},
        {R"({"carbonKeyCode":9223372036854775808,"carbonModifiers":0})", {}},
        {R"({"carbonKeyCode":1e300,"carbonModifiers":0})", {}},
        {R"([46,256])", {}},
        {"46", {}},
        {"", {}},
    };
    for (const auto& [json, expected] : cases) {
        EXPECT_EQ(Shortcut::decoded(json), expected) << json;
    }
    const Shortcut odd{-3, 1LL << 40};
    EXPECT_EQ(Shortcut::decoded(odd.encoded()), odd);
}

TEST(ModifiersTest, OnlyTheFiveSharedBitsCross)
{
    const struct {
        std::uint32_t flags;
        std::uint32_t classic;
        std::uint32_t back;
    } cases[] = {
        {0x180000, 0x900, 0x180000},
        {0x190000, 0x900, 0x180000}, // caps lock
        {0xFFFFFFFF, 0x21B00, 0x9E0000},
        {event::numericPad, 0, 0},
        {0x840000, 0x21000, 0x840000},
    };
    for (const auto& [flags, classic, back] : cases) {
        EXPECT_EQ(classicModifiers(flags), classic);
        EXPECT_EQ(eventModifiers(classic), back);
    }
    EXPECT_EQ(normalizedModifiers(-1), 0x21B00U);
}

TEST(SpecialKeyTest, EveryKeyHasACodeOfItsOwn)
{
    std::set<std::int64_t> codes;
    for (std::size_t index = 0; index < specialKeyCount; ++index) {
        const auto key = static_cast<SpecialKey>(index);
        codes.insert(keyCode(key));
        EXPECT_EQ(specialKey(keyCode(key)), key);
    }
    EXPECT_EQ(codes.size(), specialKeyCount);
    EXPECT_EQ(specialKey(46), std::nullopt);
}

TEST(SpecialKeyTest, KeysAreShownAndWrittenInMenusAsKeyboardsHaveThem)
{
    const Messages english("en_US.UTF-8");
    const struct {
        SpecialKey key;
        std::int64_t code;
        const char* symbol;
        std::optional<std::string> menu;
        int function;
    } cases[] = {
        {SpecialKey::return_, 36, "↩", "↩", 0},
        {SpecialKey::deleteForward, 117, "⌦", "⌦", 0},
        {SpecialKey::end, 119, "↘", "↘", 0},
        {SpecialKey::help, 114, "?\u20DD", "?\u20DD", 0},
        {SpecialKey::space, 49, "Space", " ", 0},
        {SpecialKey::leftArrow, 123, "←", "←", 0},
        {SpecialKey::f1, 122, "F1", "\uF704", 1},
        {SpecialKey::f13, 105, "F13", "\uF710", 13},
        {SpecialKey::f20, 90, "F20", "\uF717", 20},
        {SpecialKey::keypad7, 89, "7\u20E3", {}, 0},
        {SpecialKey::keypad8, 91, "8\u20E3", {}, 0},
        {SpecialKey::keypadClear, 71, "\u2612\u20E3", {}, 0},
        {SpecialKey::keypadEnter, 76, "↩\u20E3", {}, 0},
        {SpecialKey::keypadPlus, 69, "+\u20E3", {}, 0},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(keyCode(each.key), each.code) << each.symbol;
        EXPECT_EQ(symbol(each.key, english), each.symbol);
        EXPECT_EQ(menuKeyEquivalent(each.key), each.menu) << each.symbol;
        EXPECT_EQ(functionKeyNumber(each.code), each.function) << each.symbol;
    }
    EXPECT_EQ(symbol(SpecialKey::space, Messages("de")), "Leertaste");
}

TEST(SpecialKeyTest, ThirtyOneKeysBringTheFunctionModifierThemselves)
{
    int implied = 0;
    for (std::int64_t code = 0; code < 256; ++code) {
        const auto without = withoutImpliedFunction(code, classic::function | classic::shift);
        implied += without == classic::shift ? 1 : 0;
        EXPECT_NE(without & classic::shift, 0U);
    }
    EXPECT_EQ(implied, 31);
    EXPECT_EQ(withoutImpliedFunction(96, classic::function), 0U);                // F5
    EXPECT_EQ(withoutImpliedFunction(51, classic::function), classic::function); // delete
}

TEST(ShortcutTextTest, ModifiersComeInOneOrderBeforeTheKey)
{
    SimulatedHotKeyService keys;
    keys.characters = {{46, "m"}};
    const Messages english("C");
    EXPECT_EQ(description({46, 0x21B00}, keys, english), "⌃⌥⇧⌘\U0001F310\uFE0Em");
    EXPECT_EQ(description({49, 0x1000}, keys, english), "⌃Space");
    EXPECT_EQ(description({97, 0}, keys, english), "F6");
    EXPECT_EQ(description({-5, 0x100}, keys, english), "⌘");
}

TEST(MessagesTest, EveryTextIsThereInEveryLanguage)
{
    for (const auto* language : {"en", "de_DE.UTF-8", "ar", "he-IL"}) {
        const Messages messages(language);
        for (const auto* key : {"keyboard_shortcut_used_by_system",
                                "keyboard_shortcuts_can_be_changed",
                                "keyboard_shortcut_disallowed",
                                "force_use_shortcut",
                                "ok",
                                "space_key"})
        {
            EXPECT_NE(messages.text(key), "") << language << key;
        }
        const auto withTitle = messages.text("keyboard_shortcut_used_by_menu_item", "Quit %@");
        EXPECT_NE(withTitle.find("Quit %@"), std::string::npos) << language;
    }
    EXPECT_EQ(Messages("tlh").text("ok"), "OK");
}

} // namespace
} // namespace fadewell::shortcuts
