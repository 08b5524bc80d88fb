#include "platform/linux/pipewire/StreamTargets.h"

#include "platform/linux/pipewire/StreamRules.h"

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

} // namespace

std::optional<std::string> currentTarget(const Graph& graph, const GraphNode& stream)
{
    if (auto value = graph.metadataValue(stream.id, "target.object")) {
        return value;
    }
    if (auto value = graph.metadataValue(stream.id, "target.node")) {
        return asTargetObject(graph, std::move(value));
    }
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

} // namespace fadewell::pipewire
