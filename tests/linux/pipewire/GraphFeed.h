#pragma once

#include "platform/linux/pipewire/Graph.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace fadewell::pipewire {

/// Plays the server for a graph that is connected to none: says what exists and changes.
class GraphFeed final {
public:
    explicit GraphFeed(Graph& graph)
        : graph_(graph)
    {}

    void client(std::uint32_t id, Properties props, bool hasInfo = true)
    {
        GraphClient& client = graph_.clients_[id];
        fill(client, id, std::move(props), hasInfo);
        graph_.clientUpdated(id);
    }

    /// The registry's announcement, with the few properties that it carries.
    void announceNode(std::uint32_t id, Properties props)
    {
        GraphNode& node = graph_.nodes_[id] = GraphNode{};
        fill(node, id, std::move(props), false);
        graph_.tellAll([&node](GraphObserver& observer) { observer.nodeAppeared(node); });
    }

    /// The node's own description.
    void node(std::uint32_t id, Properties props, pw_node_state state = PW_NODE_STATE_RUNNING)
    {
        GraphNode& node = graph_.nodes_[id];
        fill(node, id, std::move(props), true);
        node.state = state;
        graph_.nodeUpdated(id);
    }
    void state(std::uint32_t id, pw_node_state state)
    {
        graph_.nodes_.at(id).state = state;
        graph_.nodeUpdated(id);
    }
    void volume(std::uint32_t id, NodeVolume volume)
    {
        graph_.nodes_.at(id).reportedVolume = std::move(volume);
        graph_.nodeUpdated(id);
    }
    void formats(std::uint32_t id, bool offersRaw, bool offersEncoded)
    {
        graph_.nodes_.at(id).offersRaw = offersRaw;
        graph_.nodes_.at(id).offersEncoded = offersEncoded;
        graph_.nodeUpdated(id);
    }
    void card(std::uint32_t id, Properties props, std::vector<GraphRoute> routes)
    {
        GraphDevice& device = graph_.devices_[id];
        fill(device, id, std::move(props), true);
        device.routes = std::move(routes);
        graph_.deviceUpdated(id);
    }
    void link(std::uint32_t id, std::uint32_t output, std::uint32_t input)
    {
        GraphLink& link = graph_.links_[id];
        fill(link, id, {}, true);
        link.outputNode = output;
        link.inputNode = input;
        graph_.linkUpdated(id);
    }
    /// Time enough has passed for the server to answer what was written.
    void settleVolumes() { graph_.endAssumptions(); }
    void remove(std::uint32_t id) { graph_.remove(id); }
    /// The session manager has gone.
    void removeMetadata() { graph_.removeMetadata(); }
    /// The server has gone.
    void removeAll() { graph_.clear(); }

    void metadata(std::uint32_t subject, const char* key, const char* value)
    {
        value_(graph_.metadata_, true, subject, key, value);
    }
    void setting(const char* key, const char* value)
    {
        value_(graph_.settings_, false, PW_ID_CORE, key, value);
    }

private:
    static void fill(GraphObject& object, std::uint32_t id, Properties props, bool hasInfo)
    {
        object.id = id;
        object.serial = 1000 + id;
        object.permissions = PW_PERM_ALL;
        object.props = std::move(props);
        object.hasInfo = hasInfo;
    }
    void value_(std::unique_ptr<Metadata>& metadata,
                bool isSessions,
                std::uint32_t subject,
                const char* key,
                const char* value)
    {
        if (metadata == nullptr) {
            graph_.keepMetadata(isSessions, GraphObject{}, nullptr);
        }
        metadata->take(subject, key, value);
    }

    Graph& graph_;
};

} // namespace fadewell::pipewire
