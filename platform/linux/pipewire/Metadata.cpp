#include "platform/linux/pipewire/Metadata.h"

#include <utility>

namespace fadewell::pipewire {

Metadata::Metadata(pw_proxy* proxy, GraphObject object, Changed changed, Refused refused)
    : object_(std::move(object))
    , changed_(std::move(changed))
    , refused_(std::move(refused))
{
    listenThrough(proxy);
}

void Metadata::listenThrough(pw_proxy* proxy)
{
    closeProxy();
    proxy_ = proxy;
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
    if (proxy_ != nullptr) {
        pw_proxy_add_listener(proxy_, &proxyHook_, &proxyEvents, this);
        pw_proxy_add_object_listener(proxy_, &objectHook_, &metadataEvents, this);
    }
}

Metadata::~Metadata()
{
    closeProxy();
}

void Metadata::closeProxy()
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
                  const char* value)
{
    if (proxy_ == nullptr) {
        take(subject, key.c_str(), value);
        return 0;
    }
    return pw_metadata_set_property(
        reinterpret_cast<pw_metadata*>(proxy_), subject, key.c_str(), type, value);
}

int Metadata::onProperty(
    void* data, std::uint32_t subject, const char* key, const char* /*type*/, const char* value)
{
    static_cast<Metadata*>(data)->take(subject, key, value);
    return 0;
}

void Metadata::take(std::uint32_t subject, const char* key, const char* value)
{
    if (key == nullptr) {
        forget(subject);
    } else if (value == nullptr) {
        if (const auto keys = values_.find(subject); keys != values_.end()) {
            keys->second.erase(key);
        }
        changed_(subject, key, std::nullopt);
    } else if (this->value(subject, key) != value) { // All are told anew to who asks again.
        values_[subject][key] = value;
        changed_(subject, key, std::string(value));
    }
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
