#include "platform/linux/pipewire/Graph.h"

#include <utility>

namespace fadewell::pipewire {

void Graph::addMetadata(GraphObject object)
{
    const std::uint32_t id = object.id;
    const std::string name = text(object.props, PW_KEY_METADATA_NAME);
    if (name != "settings" && name != "default") {
        return;
    }
    keepMetadata(name == "default", std::move(object), bindMetadata(id));
}

pw_proxy* Graph::bindMetadata(std::uint32_t id)
{
    return static_cast<pw_proxy*>(
        pw_registry_bind(registry_, id, PW_TYPE_INTERFACE_Metadata, PW_VERSION_METADATA, 0));
}

void Graph::askMetadataAgain()
{
    if (metadata_ != nullptr && registry_ != nullptr) {
        metadata_->listenThrough(bindMetadata(metadata_->object().id));
    }
}

void Graph::keepMetadata(bool isSessions, GraphObject object, pw_proxy* proxy)
{
    const auto refusal = [this, id = object.id](int result) {
        refused(id, result);
    };
    if (!isSessions) {
        settings_ = std::make_unique<Metadata>(
            proxy,
            std::move(object),
            [this](std::uint32_t, const std::string&, const std::optional<std::string>&) {
                tellAll([](GraphObserver& o) { o.settingsChanged(); });
            },
            refusal);
        return;
    }
    metadata_ = std::make_unique<Metadata>(
        proxy,
        std::move(object),
        [this](std::uint32_t subject,
               const std::string& key,
               const std::optional<std::string>& value) {
            tellAll([&](GraphObserver& o) { o.metadataChanged(subject, key, value); });
        },
        refusal);
    tellAll([](GraphObserver& o) { o.metadataAvailable(true); });
}

void Graph::removeMetadata()
{
    if (metadata_ != nullptr) {
        metadata_.reset();
        tellAll([](GraphObserver& o) { o.metadataAvailable(false); });
    }
}

void Graph::remove(std::uint32_t id)
{
    bindings_.unbind(id);
    assumed_.erase(id);
    if (const auto client = clients_.extract(id)) {
        tellAll([&](GraphObserver& o) { o.clientRemoved(client.mapped()); });
    } else if (const auto node = nodes_.extract(id)) {
        tellAll([&](GraphObserver& o) { o.nodeRemoved(node.mapped()); });
    } else if (const auto port = ports_.extract(id)) {
        tellAll([&](GraphObserver& o) { o.portRemoved(port.mapped()); });
    } else if (const auto link = links_.extract(id)) {
        tellAll([&](GraphObserver& o) { o.linkRemoved(link.mapped()); });
    } else if (const auto device = devices_.extract(id)) {
        tellAll([&](GraphObserver& o) { o.deviceRemoved(device.mapped()); });
    } else if (metadata_ != nullptr && metadata_->object().id == id) {
        removeMetadata();
    } else if (settings_ != nullptr && settings_->object().id == id) {
        settings_.reset();
    }
    // Nobody is told that these values have gone, and the next object may get the same id.
    if (metadata_ != nullptr) {
        metadata_->take(id, nullptr, nullptr);
    }
}

} // namespace fadewell::pipewire
