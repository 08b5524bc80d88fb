#pragma once

#include "platform/linux/ProcessInstance.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace fadewell::pipewire {

// What our nodes are called. Streams are sent to them by name, and a name stays on a stream after a
// crash, so that no two runs may share one.

/// The `number`th tap of a run.
[[nodiscard]] std::string tapNodeName(const ProcessInstance& owner, std::uint64_t number);
/// The `number`th lobby of a run.
[[nodiscard]] std::string lobbyNodeName(const ProcessInstance& owner, std::uint64_t number);

/// Whether this names a node of ours, whichever run made it.
[[nodiscard]] bool isOwnNodeName(std::string_view name);

/// Whether this names a node of that run.
[[nodiscard]] bool isNodeNameOf(const ProcessInstance& owner, std::string_view name);

/// Whether this names a node of a run that has ended.
[[nodiscard]] bool isLeftoverNodeName(std::string_view name);

} // namespace fadewell::pipewire
