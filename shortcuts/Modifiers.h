#pragma once

#include <array>
#include <cstdint>

namespace fadewell::shortcuts {

/// Modifier keys as shortcuts store them. On keyboards of other systems command is the Super key,
/// option is Alt and control is Ctrl.
namespace classic {
constexpr std::uint32_t command = 0x100;
constexpr std::uint32_t shift = 0x200;
constexpr std::uint32_t option = 0x800;
constexpr std::uint32_t control = 0x1000;
constexpr std::uint32_t function = 0x20000;
} // namespace classic

/// Modifier keys as key events carry them.
namespace event {
constexpr std::uint32_t capsLock = 0x10000;
constexpr std::uint32_t shift = 0x20000;
constexpr std::uint32_t control = 0x40000;
constexpr std::uint32_t option = 0x80000;
constexpr std::uint32_t command = 0x100000;
constexpr std::uint32_t numericPad = 0x200000;
constexpr std::uint32_t function = 0x800000;
} // namespace event

/// One modifier in both encodings.
struct ModifierBits {
    std::uint32_t classic;
    std::uint32_t event;
};

/// The five modifiers that both encodings know; every other bit is dropped in either direction.
constexpr std::array<ModifierBits, 5> modifierBits{{{classic::command, event::command},
                                                    {classic::shift, event::shift},
                                                    {classic::option, event::option},
                                                    {classic::control, event::control},
                                                    {classic::function, event::function}}};

[[nodiscard]] constexpr std::uint32_t classicModifiers(std::uint32_t eventFlags)
{
    std::uint32_t result = 0;
    for (const auto& bits : modifierBits) {
        result |= (eventFlags & bits.event) != 0 ? bits.classic : 0;
    }
    return result;
}

[[nodiscard]] constexpr std::uint32_t eventModifiers(std::int64_t classicFlags)
{
    std::uint32_t result = 0;
    for (const auto& bits : modifierBits) {
        result |= (classicFlags & bits.classic) != 0 ? bits.event : 0;
    }
    return result;
}

/// Only the five known bits of a stored word.
[[nodiscard]] constexpr std::uint32_t normalizedModifiers(std::int64_t classicFlags)
{
    return classicModifiers(eventModifiers(classicFlags));
}

} // namespace fadewell::shortcuts
