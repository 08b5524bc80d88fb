#pragma once

#include <cstdint>
#include <optional>

namespace fadewell::shortcuts {

/// A key pressed or released in one of this program's own windows.
struct KeyEvent {
    enum class Type : std::uint32_t {
        keyDown = 10,
        keyUp = 11
    };

    Type type = Type::keyDown;
    std::optional<std::uint16_t> keyCode{}; ///< virtual; absent for a key that has no code
    std::uint32_t modifierFlags = 0;        ///< see event::
    bool isARepeat = false;
    int functionKey = 0; ///< 1 to 35 for F1 to F35
};

} // namespace fadewell::shortcuts
