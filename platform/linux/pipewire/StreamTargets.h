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

/// What the stream's own program asks for, while nobody has assigned it anything else. [locked]
[[nodiscard]] std::optional<std::string> requestedTarget(const Graph& graph,
                                                         const GraphNode& stream);

/// What others have assigned to a stream, as it can be given back later: an output by its
/// node.name, which outlives serials and ids, "-1" for "the default, whatever the program asks
/// for", other text as it is; empty when nothing is assigned. [locked]
[[nodiscard]] std::string assignedTarget(const Graph& graph, std::uint32_t stream);

/// Assigns to a stream what assignedTarget() said, now or in an earlier run. [locked]
void giveBackTarget(Graph& graph, std::uint32_t stream, const std::string& target);

/// To be called after a stream was sent to a tap. The session manager remembers every assignment
/// as the user's choice, and one that names no output as none; this has it remember `output`, by
/// its node.name, without moving the stream. Without such an output nothing happens. [locked]
void keepRemembered(Graph& graph, std::uint32_t stream, const std::string& output);

inline constexpr const char* targetObjectKey = "target.object";
inline constexpr const char* targetNodeKey = "target.node"; ///< older: less than the other counts

} // namespace fadewell::pipewire
