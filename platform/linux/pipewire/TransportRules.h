#pragma once

#include "platform/linux/pipewire/GraphObjects.h"

#include <cstdint>
#include <optional>

namespace fadewell::pipewire {

/// How a device is connected, as the transport-type property says it; 0 when nobody knows. `node`
/// is the sink or source, `card` what it belongs to (empty for none), `route` the way in use (null
/// for none).
[[nodiscard]] std::uint32_t
transportType(const Properties& node, const Properties& card, const GraphRoute* route);

/// What is plugged into a built-in output: headphones or the speaker; absent for any other
/// transport.
[[nodiscard]] std::optional<std::uint32_t> dataSource(std::uint32_t transport,
                                                      const GraphRoute* route);

} // namespace fadewell::pipewire
