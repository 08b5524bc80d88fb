#pragma once

#include <string_view>

namespace fadewell {

/// The calls of AudioHardware, for faults and the call log.
enum class HardwareCall {
    has,
    isSettable,
    dataSize,
    getData,
    setData,
    getString,
    deviceForUID,
    tapDescription,
    setTapDescription,
    addListener,
    removeListener,
    createProcessTap,
    destroyProcessTap,
    createAggregateDevice,
    destroyAggregateDevice,
    createIOProc,
    destroyIOProc,
    start,
    stop
};

/// The call's own name, such as "createProcessTap".
[[nodiscard]] std::string_view name(HardwareCall call);

/// Whether it changes the sound system, and not only reads it or listens to it.
[[nodiscard]] bool isChange(HardwareCall call);

} // namespace fadewell
