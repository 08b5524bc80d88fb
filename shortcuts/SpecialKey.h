#pragma once

#include "shortcuts/Messages.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace fadewell::shortcuts {

/// The keys that are shown by a symbol of their own rather than by what they type.
enum class SpecialKey {
    // clang-format off
    return_, delete_, deleteForward, end, escape, help, home, space, tab, pageUp, pageDown,
    upArrow, rightArrow, downArrow, leftArrow,
    f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20,
    keypad0, keypad1, keypad2, keypad3, keypad4, keypad5, keypad6, keypad7, keypad8, keypad9,
    keypadClear, keypadDecimal, keypadDivide, keypadEnter, keypadEquals, keypadMinus,
    keypadMultiply, keypadPlus,
    // clang-format on
};

constexpr std::size_t specialKeyCount = 53;

/// The special key with this virtual key code, if it is one.
[[nodiscard]] std::optional<SpecialKey> specialKey(std::int64_t keyCode);

[[nodiscard]] std::int64_t keyCode(SpecialKey key);

/// What is shown for the key.
[[nodiscard]] std::string symbol(SpecialKey key, const Messages& messages);

/// What stands for the key in a menu entry; keypad keys have no such thing.
[[nodiscard]] std::optional<std::string> menuKeyEquivalent(SpecialKey key);

/// 1 to 20 for F1 to F20, else 0.
[[nodiscard]] int functionKeyNumber(std::int64_t keyCode);

/// A modifier word without the function bit where the keyboard adds that by itself: for the
/// function keys, the arrows and the keys around them.
[[nodiscard]] std::uint32_t withoutImpliedFunction(std::int64_t keyCode, std::uint32_t modifiers);

} // namespace fadewell::shortcuts
