#pragma once

#include <cstdint>
#include <optional>

namespace fadewell {

/// The kernel's code of the key with a virtual key code; absent for codes that no key has.
[[nodiscard]] std::optional<std::uint16_t> evdevCode(std::uint32_t keyCode);

/// The other way round; absent for keys that shortcuts don't know.
[[nodiscard]] std::optional<std::uint16_t> virtualKeyCode(std::uint32_t evdev);

/// X and Wayland count the kernel's codes from 8.
constexpr std::uint16_t xKeycodeOffset = 8;

} // namespace fadewell
