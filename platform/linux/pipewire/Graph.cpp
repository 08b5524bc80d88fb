#include "platform/linux/pipewire/Graph.h"

#include <pipewire/permission.h>

#include <cerrno>
#include <utility>

namespace fadewell::pipewire {

namespace {

template <class Object>
const Object* lookUp(const std::map<std::uint32_t, Object>& objects, std::uint32_t id)
{
    const auto found = objects.find(id);
    return found == objects.end() ? nullptr : &found->second;
}

/// Stores the object under its id, as more than the registry told.
template <class Object>
Object& store(std::map<std::uint32_t, Object>& objects, GraphObject object)
{
    Object& stored = objects[object.id];
    stored = Object{};
    static_cast<GraphObject&>(stored) = std::move(object);
    return stored;
}

std::uint32_t identifier(const Properties& properties, std::string_view key)
{
    return static_cast<std::uint32_t>(number(properties, key).value_or(SPA_ID_INVALID));
}

} // namespace

Graph::~Graph()
{
    const Connection::Lock lock(connection_);
    observers_.clear();
    detach();
    if (assumptionsEnd_ != nullptr) {
        pw_loop_destroy_source(connection_.loop(), assumptionsEnd_);
    }
}

bool Graph::attach()
{
    if (registry_ != nullptr || !connection_.isConnected()) {
        return registry_ != nullptr;
    }
    registry_ = pw_core_get_registry(connection_.core(), PW_VERSION_REGISTRY, 0);
    if (registry_ == nullptr) {
        return false;
    }
    pw_registry_add_listener(registry_, &registryHook_, &registryEvents(), this);
    return true;
}

void Graph::detach()
{
    if (registry_ == nullptr) {
        return;
    }
    bindings_.clear();
    spa_hook_remove(&registryHook_);
    pw_proxy_destroy(reinterpret_cast<pw_proxy*>(std::exchange(registry_, nullptr)));
    clear();
}

void Graph::clear()
{
    settings_.reset();
    clients_.clear();
    nodes_.clear();
    ports_.clear();
    links_.clear();
    devices_.clear();
    assumed_.clear();
    removeMetadata();
    tellAll([](GraphObserver& observer) { observer.disconnected(); });
}

const GraphClient* Graph::client(std::uint32_t id) const
{
    return lookUp(clients_, id);
}
const GraphNode* Graph::node(std::uint32_t id) const
{
    return lookUp(nodes_, id);
}
const GraphLink* Graph::link(std::uint32_t id) const
{
    return lookUp(links_, id);
}
const GraphDevice* Graph::device(std::uint32_t id) const
{
    return lookUp(devices_, id);
}

const GraphNode* Graph::nodeNamed(std::string_view name) const
{
    const auto found = std::find_if(nodes_.begin(), nodes_.end(), [name](const auto& entry) {
        return find(entry.second.props, PW_KEY_NODE_NAME) == name;
    });
    return found == nodes_.end() ? nullptr : &found->second;
}

const GraphNode* Graph::nodeWithSerial(std::uint64_t serial) const
{
    const auto found = std::find_if(nodes_.begin(), nodes_.end(), [serial](const auto& entry) {
        return entry.second.serial == serial;
    });
    return found == nodes_.end() ? nullptr : &found->second;
}

std::vector<const GraphLink*> Graph::linksBetween(std::uint32_t outputNode,
                                                  std::uint32_t inputNode) const
{
    std::vector<const GraphLink*> between;
    for (const auto& [id, link] : links_) {
        if ((outputNode == SPA_ID_INVALID || link.outputNode == outputNode) &&
            (inputNode == SPA_ID_INVALID || link.inputNode == inputNode))
        {
            between.push_back(&link);
        }
    }
    return between;
}

bool Graph::isSessionManagers(const GraphLink& link) const
{
    const auto maker = number(link.props, PW_KEY_CLIENT_ID);
    return maker && metadata_ && number(metadata_->object().props, PW_KEY_CLIENT_ID) == maker;
}

void Graph::destroy(std::uint32_t id)
{
    if (registry_ != nullptr) {
        pw_registry_destroy(registry_, id);
    }
}

std::uint32_t Graph::metadataPermissions() const
{
    return metadata_ == nullptr ? 0 : metadata_->object().permissions;
}

void Graph::noteGranted()
{
    if (metadata_ != nullptr) {
        metadata_->setPermissions(PW_PERM_ALL);
    }
    for (auto& [id, device] : devices_) {
        device.permissions = PW_PERM_ALL;
    }
    for (auto& [id, node] : nodes_) {
        node.permissions = PW_PERM_ALL;
        nodeUpdated(id);
    }
}

std::optional<std::string> Graph::metadataValue(std::uint32_t subject, const std::string& key) const
{
    return metadata_ == nullptr ? std::nullopt : metadata_->value(subject, key);
}

std::optional<std::string> Graph::settingsValue(const std::string& key) const
{
    return settings_ == nullptr ? std::nullopt : settings_->value(PW_ID_CORE, key);
}

void Graph::setSetting(const std::string& key, const std::string& value)
{
    if (settings_ != nullptr) {
        settings_->set(PW_ID_CORE, key, nullptr, value.c_str());
    }
}

std::uint32_t Graph::longestCycle() const
{
    constexpr std::uint32_t usual = 2048;
    const auto longest = number(settingsValue("clock.max-quantum").value_or(""));
    return longest && *longest > 0 ? static_cast<std::uint32_t>(*longest) : usual;
}

int Graph::setMetadata(std::uint32_t subject,
                       const std::string& key,
                       const std::string& type,
                       const std::optional<std::string>& value)
{
    if (metadata_ == nullptr) {
        return -ENOENT;
    }
    return metadata_->set(
        subject, key, type.empty() ? nullptr : type.c_str(), value ? value->c_str() : nullptr);
}

void Graph::clientUpdated(std::uint32_t id)
{
    tellAll([&client = clients_.at(id)](GraphObserver& o) { o.clientChanged(client); });
}

void Graph::nodeUpdated(std::uint32_t id)
{
    GraphNode& node = nodes_.at(id);
    node.volume = shownVolume(node);
    tellAll([&node](GraphObserver& o) { o.nodeChanged(node); });
}

void Graph::linkUpdated(std::uint32_t id)
{
    tellAll([&link = links_.at(id)](GraphObserver& o) { o.linkChanged(link); });
}

void Graph::deviceUpdated(std::uint32_t id)
{
    tellAll([&device = devices_.at(id)](GraphObserver& o) { o.deviceChanged(device); });
}

void Graph::refused(std::uint32_t id, int result)
{
    tellAll([=](GraphObserver& o) { o.writeRefused(id, result); });
}

const pw_registry_events& Graph::registryEvents()
{
    static const pw_registry_events events = [] {
        pw_registry_events table = {};
        table.version = PW_VERSION_REGISTRY_EVENTS;
        table.global = &Graph::onGlobal;
        table.global_remove = &Graph::onGlobalRemove;
        return table;
    }();
    return events;
}

void Graph::onGlobal(void* data,
                     std::uint32_t id,
                     std::uint32_t permissions,
                     const char* type,
                     std::uint32_t /*version*/,
                     const spa_dict* properties)
{
    GraphObject object;
    object.id = id;
    object.permissions = permissions;
    merge(object.props, properties);
    object.serial = number(object.props, PW_KEY_OBJECT_SERIAL).value_or(0);
    static_cast<Graph*>(data)->add(std::move(object), type);
}

void Graph::onGlobalRemove(void* data, std::uint32_t id)
{
    static_cast<Graph*>(data)->remove(id);
}

void Graph::add(GraphObject object, std::string_view type)
{
    const std::uint32_t id = object.id;
    if (type == PW_TYPE_INTERFACE_Client) {
        auto& client = store(clients_, std::move(object));
        bindings_.bind(registry_, *this, client);
        clientUpdated(id);
    } else if (type == PW_TYPE_INTERFACE_Node) {
        addNode(std::move(object));
    } else if (type == PW_TYPE_INTERFACE_Port) {
        addPort(std::move(object));
    } else if (type == PW_TYPE_INTERFACE_Link) {
        addLink(std::move(object));
    } else if (type == PW_TYPE_INTERFACE_Device) {
        auto& device = store(devices_, std::move(object));
        bindings_.bind(registry_, *this, device);
        deviceUpdated(id);
    } else if (type == PW_TYPE_INTERFACE_Metadata) {
        addMetadata(std::move(object));
    }
}

void Graph::addNode(GraphObject object)
{
    GraphNode& node = store(nodes_, std::move(object));
    bindings_.bind(registry_, *this, node);
    tellAll([&node](GraphObserver& o) { o.nodeAppeared(node); });
}

void Graph::addPort(GraphObject object)
{
    GraphPort& port = store(ports_, std::move(object));
    port.nodeID = identifier(port.props, PW_KEY_NODE_ID);
    port.isOutput = find(port.props, PW_KEY_PORT_DIRECTION) == "out";
    tellAll([&port](GraphObserver& o) { o.portChanged(port); });
}

void Graph::addLink(GraphObject object)
{
    const std::uint32_t id = object.id;
    GraphLink& link = store(links_, std::move(object));
    link.outputNode = identifier(link.props, PW_KEY_LINK_OUTPUT_NODE);
    link.outputPort = identifier(link.props, PW_KEY_LINK_OUTPUT_PORT);
    link.inputNode = identifier(link.props, PW_KEY_LINK_INPUT_NODE);
    link.inputPort = identifier(link.props, PW_KEY_LINK_INPUT_PORT);
    bindings_.bind(registry_, *this, link);
    linkUpdated(id);
}

} // namespace fadewell::pipewire
