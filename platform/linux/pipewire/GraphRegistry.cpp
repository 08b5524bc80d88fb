#include "platform/linux/pipewire/Graph.h"

#include <utility>

namespace fadewell::pipewire {

void Graph::addMetadata(GraphObject object)
{
    const std::uint32_t id = object.id;
    const auto name = find(object.props, PW_KEY_METADATA_NAME);
    const auto refusal = [this, id](int result) {
        refused(id, result);
    };
    if (name == "settings") {
        settings_ = std::make_unique<Metadata>(
            registry_,
            std::move(object),
            [this](std::uint32_t, const std::string&, const std::optional<std::string>&) {
                tellAll([](GraphObserver& o) { o.settingsChanged(); });
            },
            refusal);
    } else if (name == "default") {
        metadata_ = std::make_unique<Metadata>(
            registry_,
            std::move(object),
            [this](std::uint32_t subject,
                   const std::string& key,
                   const std::optional<std::string>& value) {
                tellAll([&](GraphObserver& o) { o.metadataChanged(subject, key, value); });
            },
            refusal);
        tellAll([](GraphObserver& o) { o.metadataAvailable(true); });
    }
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
}

} // namespace fadewell::pipewire
