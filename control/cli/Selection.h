#pragma once

#include "control/cli/MixerClient.h"
#include "control/values/NamedItem.h"

#include <string>

namespace fadewell::cli {

/// The app, output or call app that a person named; throws with the nearest names or the
/// candidates.
[[nodiscard]] NamedItem chooseApp(const MixerClient& client, const std::string& text);
[[nodiscard]] NamedItem chooseOutput(const MixerClient& client, const std::string& text);
[[nodiscard]] NamedItem chooseCallApp(const MixerClient& client, const std::string& text);

/// A level, 0 to 1, that is no change. Throws with the range.
[[nodiscard]] double chooseLevel(const std::string& text);

} // namespace fadewell::cli
