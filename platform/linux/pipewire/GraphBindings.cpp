#include "platform/linux/pipewire/GraphBindings.h"

#include "platform/linux/pipewire/ParameterParsing.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

namespace fadewell::pipewire {

/// Owns a proxy and its two listeners: the object's own events and refused writes.
class GraphBindings::Binding {
public:
    Binding(pw_registry* registry,
            Owner& owner,
            std::uint32_t id,
            const char* type,
            std::uint32_t version)
        : owner_(owner)
        , id_(id)
        , proxy_(static_cast<pw_proxy*>(pw_registry_bind(registry, id, type, version, 0)))
    {
        static const pw_proxy_events proxyEvents = [] {
            pw_proxy_events table = {};
            table.version = PW_VERSION_PROXY_EVENTS;
            table.error = &Binding::onError;
            return table;
        }();
        if (proxy_ != nullptr) {
            pw_proxy_add_listener(proxy_, &proxyHook_, &proxyEvents, this);
        }
    }
    virtual ~Binding()
    {
        if (proxy_ != nullptr) {
            if (isListening_) {
                spa_hook_remove(&objectHook_);
            }
            spa_hook_remove(&proxyHook_);
            pw_proxy_destroy(proxy_);
        }
    }
    Binding(const Binding&) = delete;
    Binding& operator=(const Binding&) = delete;

    [[nodiscard]] pw_proxy* proxy() const { return proxy_; }

protected:
    /// `self` is what the events get; the table must live on.
    template <class Events>
    void listen(const Events& events, void* self)
    {
        if (proxy_ != nullptr) {
            pw_proxy_add_object_listener(proxy_, &objectHook_, &events, self);
            isListening_ = true;
        }
    }
    [[nodiscard]] Owner& owner() const { return owner_; }
    [[nodiscard]] std::uint32_t id() const { return id_; }

private:
    static void onError(void* data, int /*sequence*/, int result, const char* /*message*/)
    {
        const auto& self = *static_cast<Binding*>(data);
        self.owner_.refused(self.id_, result);
    }

    Owner& owner_;
    std::uint32_t id_;
    pw_proxy* proxy_;
    spa_hook proxyHook_ = {};
    spa_hook objectHook_ = {};
    bool isListening_ = false;
};

namespace {

/// The object's own description replaces the few properties that the registry gave.
void takeOver(GraphObject& object, const spa_dict* properties)
{
    object.props.clear();
    merge(object.props, properties);
    object.hasInfo = true;
}

/// Those of `wanted` that the object has and lets us read.
std::vector<std::uint32_t> readable(std::span<const spa_param_info> offered,
                                    std::span<const std::uint32_t> wanted)
{
    std::vector<std::uint32_t> ids;
    for (const spa_param_info& info : offered) {
        if ((info.flags & SPA_PARAM_INFO_READ) != 0 &&
            std::find(wanted.begin(), wanted.end(), info.id) != wanted.end())
        {
            ids.push_back(info.id);
        }
    }
    return ids;
}

class ClientBinding final : public GraphBindings::Binding {
public:
    ClientBinding(pw_registry* registry, GraphBindings::Owner& owner, GraphClient& client)
        : Binding(registry, owner, client.id, PW_TYPE_INTERFACE_Client, PW_VERSION_CLIENT)
        , client_(client)
    {
        static const pw_client_events events = [] {
            pw_client_events table = {};
            table.version = PW_VERSION_CLIENT_EVENTS;
            table.info = &ClientBinding::onInfo;
            return table;
        }();
        listen(events, this);
    }

private:
    static void onInfo(void* data, const pw_client_info* info)
    {
        auto& self = *static_cast<ClientBinding*>(data);
        if ((info->change_mask & PW_CLIENT_CHANGE_MASK_PROPS) != 0) {
            takeOver(self.client_, info->props);
            self.owner().clientUpdated(self.id());
        }
    }

    GraphClient& client_;
};

class NodeBinding final : public GraphBindings::Binding {
public:
    NodeBinding(pw_registry* registry, GraphBindings::Owner& owner, GraphNode& node)
        : Binding(registry, owner, node.id, PW_TYPE_INTERFACE_Node, PW_VERSION_NODE)
        , node_(node)
    {
        static const pw_node_events events = [] {
            pw_node_events table = {};
            table.version = PW_VERSION_NODE_EVENTS;
            table.info = &NodeBinding::onInfo;
            table.param = &NodeBinding::onParam;
            return table;
        }();
        listen(events, this);
    }

private:
    static void onInfo(void* data, const pw_node_info* info)
    {
        auto& self = *static_cast<NodeBinding*>(data);
        self.node_.state = info->state;
        if ((info->change_mask & PW_NODE_CHANGE_MASK_PROPS) != 0) {
            takeOver(self.node_, info->props);
        }
        if ((info->change_mask & PW_NODE_CHANGE_MASK_PARAMS) != 0 && !self.isSubscribed_) {
            self.subscribe(std::span(info->params, info->n_params));
        }
        self.owner().nodeUpdated(self.id());
    }

    void subscribe(std::span<const spa_param_info> offered)
    {
        static constexpr std::uint32_t ofDevices[] = {SPA_PARAM_Props, SPA_PARAM_Format};
        static constexpr std::uint32_t ofStreams[] = {SPA_PARAM_EnumFormat};
        const std::string mediaClass = text(node_.props, PW_KEY_MEDIA_CLASS);
        const bool isStream = mediaClass == "Stream/Output/Audio";
        if (!isStream && !mediaClass.starts_with("Audio/")) {
            return;
        }
        std::vector<std::uint32_t> ids =
            isStream ? readable(offered, ofStreams) : readable(offered, ofDevices);
        if (!ids.empty()) {
            isSubscribed_ = true;
            pw_node_subscribe_params(reinterpret_cast<pw_node*>(proxy()),
                                     ids.data(),
                                     static_cast<std::uint32_t>(ids.size()));
        }
    }

    static void onParam(void* data,
                        int /*sequence*/,
                        std::uint32_t param,
                        std::uint32_t /*index*/,
                        std::uint32_t /*next*/,
                        const spa_pod* value)
    {
        auto& self = *static_cast<NodeBinding*>(data);
        if (param == SPA_PARAM_Props) {
            parseVolume(value, self.node_.reportedVolume);
        } else if (param == SPA_PARAM_Format) {
            self.node_.rate = parseRate(value).value_or(self.node_.rate);
        } else if (const auto isRaw = parseIsRaw(value)) {
            (*isRaw ? self.node_.offersRaw : self.node_.offersEncoded) = true;
        }
        self.owner().nodeUpdated(self.id());
    }

    GraphNode& node_;
    bool isSubscribed_ = false;
};

class LinkBinding final : public GraphBindings::Binding {
public:
    LinkBinding(pw_registry* registry, GraphBindings::Owner& owner, GraphLink& link)
        : Binding(registry, owner, link.id, PW_TYPE_INTERFACE_Link, PW_VERSION_LINK)
        , link_(link)
    {
        static const pw_link_events events = [] {
            pw_link_events table = {};
            table.version = PW_VERSION_LINK_EVENTS;
            table.info = &LinkBinding::onInfo;
            return table;
        }();
        listen(events, this);
    }

private:
    static void onInfo(void* data, const pw_link_info* info)
    {
        auto& self = *static_cast<LinkBinding*>(data);
        GraphLink& link = self.link_;
        link.outputNode = info->output_node_id;
        link.outputPort = info->output_port_id;
        link.inputNode = info->input_node_id;
        link.inputPort = info->input_port_id;
        link.state = info->state;
        if ((info->change_mask & PW_LINK_CHANGE_MASK_PROPS) != 0) {
            takeOver(link, info->props);
        }
        self.owner().linkUpdated(self.id());
    }

    GraphLink& link_;
};

class DeviceBinding final : public GraphBindings::Binding {
public:
    DeviceBinding(pw_registry* registry, GraphBindings::Owner& owner, GraphDevice& device)
        : Binding(registry, owner, device.id, PW_TYPE_INTERFACE_Device, PW_VERSION_DEVICE)
        , device_(device)
    {
        static const pw_device_events events = [] {
            pw_device_events table = {};
            table.version = PW_VERSION_DEVICE_EVENTS;
            table.info = &DeviceBinding::onInfo;
            table.param = &DeviceBinding::onParam;
            return table;
        }();
        listen(events, this);
    }

private:
    static void onInfo(void* data, const pw_device_info* info)
    {
        auto& self = *static_cast<DeviceBinding*>(data);
        if ((info->change_mask & PW_DEVICE_CHANGE_MASK_PROPS) != 0) {
            takeOver(self.device_, info->props);
        }
        if ((info->change_mask & PW_DEVICE_CHANGE_MASK_PARAMS) != 0) {
            self.areRoutesStale_ = true;
            self.subscribe(std::span(info->params, info->n_params));
        }
        self.owner().deviceUpdated(self.id());
    }

    void subscribe(std::span<const spa_param_info> offered)
    {
        static constexpr std::uint32_t wanted[] = {SPA_PARAM_Route};
        std::vector<std::uint32_t> ids = readable(offered, wanted);
        if (!ids.empty() && !isSubscribed_) {
            isSubscribed_ = true;
            pw_device_subscribe_params(reinterpret_cast<pw_device*>(proxy()),
                                       ids.data(),
                                       static_cast<std::uint32_t>(ids.size()));
        }
    }

    static void onParam(void* data,
                        int /*sequence*/,
                        std::uint32_t /*param*/,
                        std::uint32_t /*index*/,
                        std::uint32_t /*next*/,
                        const spa_pod* value)
    {
        auto& self = *static_cast<DeviceBinding*>(data);
        auto route = parseRoute(value);
        if (!route) {
            return;
        }
        // A change sends the whole list again, one by one, after announcing that it changed.
        auto& routes = self.device_.routes;
        if (std::exchange(self.areRoutesStale_, false)) {
            routes.clear();
        }
        std::erase_if(routes, [&](const GraphRoute& other) {
            return other.isOutput == route->isOutput && other.device == route->device;
        });
        routes.push_back(std::move(*route));
        self.owner().deviceUpdated(self.id());
    }

    GraphDevice& device_;
    bool isSubscribed_ = false;
    bool areRoutesStale_ = false;
};

} // namespace

GraphBindings::GraphBindings() = default;
GraphBindings::~GraphBindings() = default;

void GraphBindings::bind(pw_registry* registry, Owner& owner, GraphClient& client)
{
    bindings_[client.id] = std::make_unique<ClientBinding>(registry, owner, client);
}

void GraphBindings::bind(pw_registry* registry, Owner& owner, GraphNode& node)
{
    bindings_[node.id] = std::make_unique<NodeBinding>(registry, owner, node);
}

void GraphBindings::bind(pw_registry* registry, Owner& owner, GraphLink& link)
{
    bindings_[link.id] = std::make_unique<LinkBinding>(registry, owner, link);
}

void GraphBindings::bind(pw_registry* registry, Owner& owner, GraphDevice& device)
{
    bindings_[device.id] = std::make_unique<DeviceBinding>(registry, owner, device);
}

void GraphBindings::unbind(std::uint32_t id)
{
    bindings_.erase(id);
}

void GraphBindings::clear()
{
    bindings_.clear();
}

pw_proxy* GraphBindings::proxy(std::uint32_t id) const
{
    const auto found = bindings_.find(id);
    return found == bindings_.end() ? nullptr : found->second->proxy();
}

} // namespace fadewell::pipewire
