#pragma once

#include "shortcuts/OSStatus.h"

#include <compare>
#include <cstdint>

namespace fadewell::shortcuts {

/// Tags a registered hot key, so that a handler recognises its own.
struct HotKeyID {
    std::uint32_t signature = 0;
    std::uint32_t id = 0;
    bool operator==(const HotKeyID&) const = default;
};

/// What kind of event a handler wants.
struct EventType {
    std::uint32_t eventClass = 0;
    std::uint32_t eventKind = 0;
    auto operator<=>(const EventType&) const = default;
};

constexpr std::uint32_t kEventClassKeyboard = 0x6B657962; // 'keyb'
constexpr std::uint32_t kEventRawKeyDown = 1;
constexpr std::uint32_t kEventRawKeyUp = 3;
constexpr std::uint32_t kEventHotKeyPressed = 5;
constexpr std::uint32_t kEventHotKeyReleased = 6;

/// One event for the installed handler. A parameter that can't be read carries a status instead.
struct HotKeyEvent {
    template <class T>
    struct Parameter {
        T value{};
        OSStatus status = eventParameterNotFoundErr;
    };

    EventType type{};
    Parameter<HotKeyID> directObject{};      ///< '----' as 'hkid'
    Parameter<std::uint32_t> keyCode{};      ///< 'kcod' as 'magn'
    Parameter<std::uint32_t> keyModifiers{}; ///< 'kmod' as 'magn', classic bits
};

} // namespace fadewell::shortcuts
