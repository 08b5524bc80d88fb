#include "platform/linux/pipewire/Metadata.h"

#include <cerrno>
#include <utility>

namespace fadewell::pipewire {

Metadata::Metadata(pw_registry* registry, GraphObject object, Changed changed, Refused refused)
    : object_(std::move(object))
    , changed_(std::move(changed))
    , refused_(std::move(refused))
{
    static const pw_proxy_events proxyEvents = [] {
        pw_proxy_events table = {};
        table.version = PW_VERSION_PROXY_EVENTS;
        table.error = &Metadata::onError;
        return table;
    }();
    static const pw_metadata_events metadataEvents = [] {
        pw_metadata_events table = {};
        table.version = PW_VERSION_METADATA_EVENTS;
        table.property = &Metadata::onProperty;
        return table;
    }();
    proxy_ = static_cast<pw_proxy*>(
        pw_registry_bind(registry, object_.id, PW_TYPE_INTERFACE_Metadata, PW_VERSION_METADATA, 0));
    if (proxy_ != nullptr) {
        pw_proxy_add_listener(proxy_, &proxyHook_, &proxyEvents, this);
        pw_proxy_add_object_listener(proxy_, &objectHook_, &metadataEvents, this);
    }
}

Metadata::~Metadata()
{
    if (proxy_ != nullptr) {
        spa_hook_remove(&objectHook_);
        spa_hook_remove(&proxyHook_);
        pw_proxy_destroy(proxy_);
    }
}

std::optional<std::string> Metadata::value(std::uint32_t subject, const std::string& key) const
{
    const auto keys = values_.find(subject);
    if (keys == values_.end()) {
        return std::nullopt;
    }
    const auto found = keys->second.find(key);
    return found == keys->second.end() ? std::nullopt : std::optional(found->second);
}

int Metadata::set(std::uint32_t subject,
                  const std::string& key,
                  const char* type,
                  const char* value) const
{
    if (proxy_ == nullptr) {
        return -ENOENT;
    }
    return pw_metadata_set_property(
        reinterpret_cast<pw_metadata*>(proxy_), subject, key.c_str(), type, value);
}

int Metadata::onProperty(
    void* data, std::uint32_t subject, const char* key, const char* /*type*/, const char* value)
{
    auto& self = *static_cast<Metadata*>(data);
    if (key == nullptr) {
        self.forget(subject);
    } else if (value == nullptr) {
        self.values_[subject].erase(key);
        self.changed_(subject, key, std::nullopt);
    } else {
        self.values_[subject][key] = value;
        self.changed_(subject, key, std::string(value));
    }
    return 0;
}

void Metadata::forget(std::uint32_t subject)
{
    const auto forgotten = values_.extract(subject);
    if (forgotten.empty()) {
        return;
    }
    for (const auto& [key, value] : forgotten.mapped()) {
        changed_(subject, key, std::nullopt);
    }
}

void Metadata::onError(void* data, int /*sequence*/, int result, const char* /*message*/)
{
    static_cast<Metadata*>(data)->refused_(result);
}

} // namespace fadewell::pipewire
