#pragma once

#include "core/AppAudioSettings.h"
#include "core/OutputDevice.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace fadewell {

/// One entry of an app's output menu. No UID: the system's default output.
struct OutputChoice {
    std::optional<std::string> uid;
    std::optional<std::string> name; ///< absent for the system's default output
    std::string_view symbol;         ///< empty: none
    bool isConnected = true;
    bool isSelected = false;

    bool operator==(const OutputChoice&) const = default;
};

/// The symbol of a kind of device.
[[nodiscard]] std::string_view symbolName(OutputDevice::Kind kind);

/// The device that an app's sound goes to: the chosen one, else its own, else the default. Absent
/// when none of them is connected.
[[nodiscard]] const OutputDevice* deviceInUse(std::span<const OutputDevice> devices,
                                              const AppAudioSettings& settings,
                                              std::optional<std::uint32_t> ownOutputDeviceID,
                                              const std::optional<std::string>& defaultOutputUID);

/// The default output, the devices in their order and, when the chosen device isn't connected,
/// that.
[[nodiscard]] std::vector<OutputChoice> outputChoices(std::span<const OutputDevice> devices,
                                                      const AppAudioSettings& settings);

} // namespace fadewell
