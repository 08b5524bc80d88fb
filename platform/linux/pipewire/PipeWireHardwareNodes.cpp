#include "platform/linux/pipewire/PipeWireHardware.h"
#include "platform/linux/pipewire/StreamTargets.h"

#include <algorithm>
#include <array>

namespace fadewell {
namespace {

using pipewire::find;
using pipewire::Graph;
using pipewire::GraphClient;
using pipewire::GraphNode;
using pipewire::Properties;
using pipewire::text;

const GraphClient* makerOf(const Graph& graph, const GraphNode& node)
{
    const auto id = pipewire::number(node.props, PW_KEY_CLIENT_ID);
    return id ? graph.client(static_cast<std::uint32_t>(*id)) : nullptr;
}

/// The Pulse server has a client of its own for each of its programs, which has the program's name.
bool isSystem(const GraphClient& client)
{
    constexpr std::array<std::string_view, 4> programs{
        "pipewire", "pipewire-pulse", "wireplumber", "pipewire-media-session"};
    const auto binary = find(client.props, PW_KEY_APP_PROCESS_BINARY);
    return pipewire::isTrue(client.props, "wireplumber.daemon") ||
           (binary && std::find(programs.begin(), programs.end(), *binary) != programs.end());
}

void addNames(std::vector<std::string>& names, const Properties& properties)
{
    for (const char* const key : {PW_KEY_APP_NAME,
                                  PW_KEY_APP_PROCESS_BINARY,
                                  PW_KEY_APP_ID,
                                  "pipewire.access.portal.app_id",
                                  PW_KEY_NODE_NAME,
                                  PW_KEY_NODE_DESCRIPTION,
                                  PW_KEY_NODE_NICK})
    {
        if (const auto name = find(properties, key)) {
            names.emplace_back(*name);
        }
    }
}

/// The id of the node that it is to go to, which the list shows; else the target's own words.
std::string targetOf(const Graph& graph, const GraphNode& node)
{
    auto target = pipewire::currentTarget(graph, node).value_or("");
    const auto serial = pipewire::number(target);
    const auto* aim = serial ? graph.nodeWithSerial(*serial) : graph.nodeNamed(target);
    return aim == nullptr ? std::move(target) : std::to_string(aim->id);
}

std::vector<std::uint32_t> neighboursOf(const Graph& graph, std::uint32_t node)
{
    std::vector<std::uint32_t> neighbours;
    for (const auto& [id, link] : graph.links()) {
        if (link.outputNode == node || link.inputNode == node) {
            neighbours.push_back(link.outputNode == node ? link.inputNode : link.outputNode);
        }
    }
    std::sort(neighbours.begin(), neighbours.end());
    neighbours.erase(std::unique(neighbours.begin(), neighbours.end()), neighbours.end());
    return neighbours;
}

SoundNode describe(const Graph& graph, const GraphNode& node, std::uint32_t ownClientID)
{
    SoundNode described;
    described.id = node.id;
    described.kind = text(node.props, PW_KEY_MEDIA_CLASS);
    described.name = text(node.props, PW_KEY_NODE_NAME);
    described.state = pw_node_state_as_string(node.state);
    described.target = targetOf(graph, node);
    described.neighbours = neighboursOf(graph, node.id);
    addNames(described.names, node.props);
    const auto* const client = makerOf(graph, node);
    if (client != nullptr) {
        described.maker = client->id == ownClientID || pipewire::isOwnNode(node.props)
                              ? SoundNode::Maker::fadewell
                          : isSystem(*client) ? SoundNode::Maker::system
                                              : SoundNode::Maker::program;
        described.makerName = text(client->props, PW_KEY_APP_NAME);
        addNames(described.names, client->props);
    }
    return described;
}

} // namespace

std::vector<SoundNode> PipeWireHardware::soundNodes() const
{
    const pipewire::Connection::Lock lock(*connection_);
    std::vector<SoundNode> nodes;
    for (const auto& [id, node] : graph_.nodes()) {
        auto described = describe(graph_, node, connection_->clientID());
        if (const auto process = processes_.processForNode(id)) {
            described.appID = processes_.bundleID(*process);
        }
        nodes.push_back(std::move(described));
    }
    return nodes;
}

} // namespace fadewell
