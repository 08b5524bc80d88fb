#include "platform/linux/hotkeys/KeyCodeMap.h"
#include "platform/linux/hotkeys/LinuxHotKeyService.h"
#include "platform/linux/hotkeys/XKeyboard.h"
#include "shortcuts/Modifiers.h"
#include "shortcuts/SpecialKey.h"

#include <gmock/gmock.h>
#include <linux/input-event-codes.h>

namespace fadewell {
namespace {

namespace classic = shortcuts::classic;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

TEST(KeyCodeMapTest, EveryKeyIsOneKeyInBothDirections)
{
    int known = 0;
    for (std::uint32_t code = 0; code < 256; ++code) {
        if (const auto evdev = evdevCode(code)) {
            EXPECT_EQ(virtualKeyCode(*evdev), code);
            ++known;
        }
    }
    EXPECT_EQ(known, 120);
    for (std::size_t index = 0; index < shortcuts::specialKeyCount; ++index) {
        EXPECT_TRUE(evdevCode(static_cast<std::uint32_t>(
            shortcuts::keyCode(static_cast<shortcuts::SpecialKey>(index)))));
    }
    EXPECT_EQ(evdevCode(0x2E), KEY_M);
    EXPECT_EQ(evdevCode(0x72), KEY_INSERT);
    EXPECT_EQ(virtualKeyCode(KEY_F24), std::nullopt);
}

TEST(XModifiersTest, GrabsComeInEveryStateOfTheLocks)
{
    const struct {
        XModifiers modifiers;
        std::vector<std::uint16_t> variants;
    } cases[] = {
        {{0x40, 0x08, 0x10, 0x20}, {0, 0x02, 0x10, 0x12, 0x20, 0x22, 0x30, 0x32}},
        {{0x40, 0x08, 0x10, 0}, {0, 0x02, 0x10, 0x12}},
        {{0x40, 0x08, 0x10, 0x10}, {0, 0x02, 0x10, 0x12}}, // both locks on one modifier
        {{0x40, 0x08, 0x40, 0}, {0, 0x02}},                // a lock that is a modifier too
    };
    for (const auto& [modifiers, variants] : cases) {
        EXPECT_THAT(modifiers.lockVariants(), testing::UnorderedElementsAreArray(variants));
    }
}

TEST(XModifiersTest, WhatTheKeyboardLacksIsImpossible)
{
    const XModifiers full{0x40, 0x08, 0x10, 0};
    const struct {
        XModifiers modifiers;
        std::uint32_t classic;
        std::uint16_t state;
        bool isPossible;
    } cases[] = {
        {full, classic::command | classic::option | classic::shift | classic::control, 0x4D, true},
        {full, 0, 0, true},
        {full, classic::function, 0, false},
        {{0, 0x08, 0, 0}, classic::command | classic::shift, 0, false},
    };
    for (const auto& each : cases) {
        bool isPossible = false;
        EXPECT_EQ(each.modifiers.state(each.classic, isPossible), each.state);
        EXPECT_EQ(isPossible, each.isPossible);
    }
}

TEST(LinuxHotKeyServiceTest, KeysOfOwnWindowsArriveWithTheirCodes)
{
    LinuxHotKeyService keys;
    std::vector<int> codes;
    std::vector<int> functions;
    bool isSwallowed = false;
    auto monitor = keys.monitorKeys([&](const shortcuts::KeyEvent& event) {
        codes.push_back(event.keyCode.value_or(999));
        functions.push_back(event.functionKey);
        return isSwallowed;
    });
    for (const int evdev : {KEY_F1, KEY_F10, KEY_F11, KEY_F13, KEY_F24, KEY_A}) {
        EXPECT_EQ(keys.deliverLocalKey(static_cast<std::uint32_t>(evdev), true, false, 0),
                  isSwallowed);
        isSwallowed = true;
    }
    monitor.cancel();
    EXPECT_FALSE(keys.deliverLocalKey(KEY_A, true, false, 0));
    EXPECT_THAT(codes, ElementsAre(122, 109, 103, 105, 999, 0));
    EXPECT_THAT(functions, ElementsAre(1, 10, 11, 13, 24, 0));
    EXPECT_EQ(keys.character(0x0C), "q"); // Without a keyboard: a US one's.
}

} // namespace
} // namespace fadewell
