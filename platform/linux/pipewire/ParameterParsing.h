#pragma once

#include "platform/linux/pipewire/GraphObjects.h"

#include <spa/pod/builder.h>
#include <spa/pod/pod.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace fadewell::pipewire {

/// Takes over volume and mute from a Props parameter; what it doesn't mention stays. The pod may be
/// null or of any other kind.
void parseVolume(const spa_pod* props, NodeVolume& volume);

/// The sample rate of a raw audio format.
[[nodiscard]] std::optional<std::uint32_t> parseRate(const spa_pod* format);

/// Whether an audio format is raw samples (true) or encoded sound (false); absent for anything
/// else, such as control data.
[[nodiscard]] std::optional<bool> parseIsRaw(const spa_pod* format);

[[nodiscard]] std::optional<GraphRoute> parseRoute(const spa_pod* route);

/// The parameter that sets what `volume` knows. Lives in the builder's memory.
[[nodiscard]] const spa_pod*
buildVolume(spa_pod_builder& builder, std::uint32_t paramID, const NodeVolume& volume);

/// The parameter that sets volume and mute of a card's route; kept when the route is saved.
[[nodiscard]] const spa_pod*
buildRoute(spa_pod_builder& builder, const GraphRoute& route, const NodeVolume& volume);

/// The node name in a metadata value such as {"name":"alsa_output.pci"}.
[[nodiscard]] std::optional<std::string> parseDefaultName(std::string_view json);

} // namespace fadewell::pipewire
