#pragma once

#include "audio/Tappability.h"
#include "platform/linux/pipewire/GraphObjects.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace fadewell::pipewire {

/// What a node is to the processes' list.
enum class StreamKind {
    none,   ///< no stream of an app: a device, a filter, a level meter, a daemon's, our own
    output, ///< plays
    input,  ///< records from a microphone
};

/// Whether this node is one of Fadewell's, whichever run of it made it.
[[nodiscard]] bool isOwnNode(const Properties& node);

/// Judges by the properties alone. `ownClientID` is this program's client.
[[nodiscard]] StreamKind streamKind(const Properties& node, std::uint32_t ownClientID);

/// Why an output stream can't be routed; absent when it can, or while that isn't known yet.
[[nodiscard]] std::optional<UntappableReason> untappableReason(const GraphNode& node);

} // namespace fadewell::pipewire
