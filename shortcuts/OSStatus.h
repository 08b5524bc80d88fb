#pragma once

#include <cstdint>

namespace fadewell::shortcuts {

/// How a call of the platform ended; 0 is success.
using OSStatus = std::int32_t;

constexpr OSStatus noErr = 0;
constexpr OSStatus eventNotHandledErr = -9874;
constexpr OSStatus eventParameterNotFoundErr = -9870;
constexpr OSStatus eventHotKeyExistsErr = -9878;  ///< another program holds the combination
constexpr OSStatus eventHotKeyInvalidErr = -9879; ///< this keyboard can't produce the combination

} // namespace fadewell::shortcuts
