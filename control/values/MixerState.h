#pragma once

#include "control/values/AppEntry.h"
#include "control/values/CallModeEntry.h"
#include "control/values/JsonOutput.h"
#include "control/values/MicrophoneEntry.h"
#include "control/values/OutputEntry.h"

#include <string>
#include <vector>

namespace fadewell {

/// Everything that a watcher follows, at one moment.
struct MixerState {
    std::vector<AppEntry> apps{};
    std::vector<OutputEntry> outputs{};
    MicrophoneEntry microphone{};
    CallModeEntry callMode{};

    bool operator==(const MixerState&) const = default;
};

[[nodiscard]] OrderedJson toJson(const MixerState& state);

/// One line for each thing that is other than before; empty when nothing is.
[[nodiscard]] std::string describeChanges(const MixerState& before, const MixerState& after);

} // namespace fadewell
