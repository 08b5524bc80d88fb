#pragma once

#include "platform/linux/pipewire/Graph.h"

#include <cstdint>
#include <optional>
#include <string>

namespace fadewell::pipewire {

/// What a stream is aimed at as things stand, in the session manager's order of precedence: a node
/// name, a serial or an id. Absent when it follows the default. [locked]
[[nodiscard]] std::optional<std::string> currentTarget(const Graph& graph, const GraphNode& stream);

/// The node that a target's value names; null when it stands for the default, when there is no such
/// node and when it is one of ours. [locked]
[[nodiscard]] const GraphNode* targetNode(const Graph& graph, const std::string& value);

} // namespace fadewell::pipewire
