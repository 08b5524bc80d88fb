#pragma once

#include "audio/AudioHardware.h"
#include "audio/TapRequest.h"
#include "core/TapTarget.h"

#include <optional>
#include <span>
#include <vector>

namespace fadewell {

/// Chooses each request's output device: the preferred one while it is connected, else the one
/// where the app plays by itself, else the default. In request order; absent when there is no
/// default output. [any thread]
[[nodiscard]] std::optional<std::vector<TapTarget>>
makeTapTargets(AudioHardware& hardware, std::span<const TapRequest> requests);

} // namespace fadewell
