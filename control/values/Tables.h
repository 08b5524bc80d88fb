#pragma once

#include "control/values/AppEntry.h"
#include "control/values/CallModeEntry.h"
#include "control/values/MicrophoneEntry.h"
#include "control/values/OutputEntry.h"

#include <cstdint>
#include <string>
#include <vector>

namespace fadewell {

/// Texts for people at a terminal, ended by a line feed; percentages in the user's locale.
[[nodiscard]] std::string appTable(const std::vector<AppEntry>& apps);
[[nodiscard]] std::string outputTable(const std::vector<OutputEntry>& outputs);

/// One line about an app: its name, volume, mute and output.
[[nodiscard]] std::string appLine(const AppEntry& app);
/// A line for each app that uses the microphone, with the time in the user's own zone and how long
/// that has been at `now` (seconds since 1970).
[[nodiscard]] std::string microphoneUses(const MicrophoneEntry& microphone, std::int64_t now);
[[nodiscard]] std::string microphoneLine(const MicrophoneEntry& microphone);
[[nodiscard]] std::string callModeLine(const CallModeEntry& callMode);
[[nodiscard]] std::string callSettingsText(const CallModeEntry& callMode);

/// Why an app can't be controlled, for its `untappableReason`.
[[nodiscard]] std::string untappableText(const std::string& reason);

} // namespace fadewell
