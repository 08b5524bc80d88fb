#include "platform/linux/pipewire/StreamTargets.h"

#include "platform/linux/pipewire/StreamRules.h"
#include "platform/linux/pipewire/taps/TapNames.h"

#include <utility>

namespace fadewell::pipewire {

namespace {

/// The older key holds an id where the newer has a serial; both may hold a name. Translated to the
/// newer's form.
std::optional<std::string> asTargetObject(const Graph& graph, std::optional<std::string> value)
{
    const auto id = value ? number(*value) : std::nullopt;
    if (!id) {
        return value;
    }
    const GraphNode* const node = graph.node(static_cast<std::uint32_t>(*id));
    return node == nullptr ? std::nullopt : std::optional(std::to_string(node->serial));
}

std::optional<std::string> property(const GraphNode& stream, const char* key)
{
    const auto value = find(stream.props, key);
    return value ? std::optional<std::string>(*value) : std::nullopt;
}

bool isOurs(const Graph& graph, const std::string& target)
{
    const auto serial = number(target);
    const GraphNode* const node = serial ? graph.nodeWithSerial(*serial) : nullptr;
    return isOwnNodeName(target) || (node != nullptr && isOwnNode(node->props));
}

/// An output by its name, everything else as it is.
std::string lasting(const Graph& graph, std::string target)
{
    const GraphNode* const node = targetNode(graph, target);
    return node == nullptr ? std::move(target) : text(node->props, PW_KEY_NODE_NAME);
}

/// Deleted first: writing what is there already would be no event, and nothing remembered.
void rewriteTargetNode(Graph& graph, std::uint32_t stream, std::uint32_t output)
{
    graph.setMetadata(stream, targetNodeKey, "", std::nullopt);
    graph.setMetadata(stream, targetNodeKey, "Spa:Id", std::to_string(output));
}

} // namespace

std::optional<std::string> currentTarget(const Graph& graph, const GraphNode& stream)
{
    if (auto value = graph.metadataValue(stream.id, targetObjectKey)) {
        return value;
    }
    if (auto value = graph.metadataValue(stream.id, targetNodeKey)) {
        return asTargetObject(graph, std::move(value));
    }
    return requestedTarget(graph, stream);
}

std::optional<std::string> requestedTarget(const Graph& graph, const GraphNode& stream)
{
    if (auto value = property(stream, PW_KEY_TARGET_OBJECT)) {
        return value;
    }
    return asTargetObject(graph, property(stream, "node.target"));
}

const GraphNode* targetNode(const Graph& graph, const std::string& value)
{
    const auto serial = number(value);
    const GraphNode* const node = serial ? graph.nodeWithSerial(*serial) : graph.nodeNamed(value);
    return node != nullptr && !isOwnNode(node->props) ? node : nullptr;
}

std::string assignedTarget(const Graph& graph, std::uint32_t stream)
{
    const auto target = graph.metadataValue(stream, targetObjectKey);
    if (target && !isOurs(graph, *target)) {
        return lasting(graph, *target);
    }
    // "-1" is no number here, nor is the id of an output that has gone an assignment.
    const auto older = graph.metadataValue(stream, targetNodeKey);
    const auto object = older == "-1" ? std::nullopt : asTargetObject(graph, older);
    return object && !isOurs(graph, *object) ? lasting(graph, *object) : "";
}

void giveBackTarget(Graph& graph, std::uint32_t stream, const std::string& target)
{
    if (const GraphNode* const output = target.empty() ? nullptr : targetNode(graph, target)) {
        graph.setMetadata(stream, targetObjectKey, "Spa:Id", std::to_string(output->serial));
        return;
    }
    if (!target.empty()) {
        const bool isId = target == "-1" || number(target);
        graph.setMetadata(stream, targetObjectKey, isId ? "Spa:Id" : "", target);
        return;
    }
    graph.setMetadata(stream, targetObjectKey, "", std::nullopt);
    // What an earlier run's session had remembered counts again, and is to be remembered further.
    keepRemembered(graph, stream, assignedTarget(graph, stream));
}

void keepRemembered(Graph& graph, std::uint32_t stream, const std::string& output)
{
    if (const GraphNode* const node = output.empty() ? nullptr : targetNode(graph, output)) {
        rewriteTargetNode(graph, stream, node->id);
    }
}

} // namespace fadewell::pipewire
