#include "demo/OutputMeters.h"

#include <string_view>

namespace fadewell::demo {
namespace {

std::string_view value(const spa_dict* properties, const char* key)
{
    const char* found = properties != nullptr ? spa_dict_lookup(properties, key) : nullptr;
    return found != nullptr ? found : "";
}

} // namespace

OutputMeters::OutputMeters(pw_core* core)
    : core_(core)
    , registry_(pw_core_get_registry(core, PW_VERSION_REGISTRY, 0))
{
    static const pw_registry_events events = [] {
        pw_registry_events made{};
        made.version = PW_VERSION_REGISTRY_EVENTS;
        made.global = &OutputMeters::onGlobal;
        made.global_remove = &OutputMeters::onGlobalRemove;
        return made;
    }();
    pw_registry_add_listener(registry_, &listener_, &events, this);
}

OutputMeters::~OutputMeters()
{
    outputs_.clear();
    spa_hook_remove(&listener_);
    pw_proxy_destroy(reinterpret_cast<pw_proxy*>(registry_));
}

void OutputMeters::onGlobal(void* data,
                            std::uint32_t id,
                            std::uint32_t,
                            const char* type,
                            std::uint32_t,
                            const spa_dict* properties)
{
    auto& self = *static_cast<OutputMeters*>(data);
    if (std::string_view(type) != PW_TYPE_INTERFACE_Node ||
        value(properties, PW_KEY_MEDIA_CLASS) != "Audio/Sink")
    {
        return;
    }
    const std::string name(value(properties, PW_KEY_NODE_NAME));
    const std::string shown(value(properties, PW_KEY_NODE_DESCRIPTION));
    self.outputs_[id] = {shown.empty() ? name : shown,
                         std::make_unique<LevelMeter>(self.core_, name)};
}

void OutputMeters::onGlobalRemove(void* data, std::uint32_t id)
{
    static_cast<OutputMeters*>(data)->outputs_.erase(id);
}

std::vector<OutputLevel> OutputMeters::take()
{
    std::vector<OutputLevel> levels;
    for (auto& [id, output] : outputs_) {
        levels.push_back({output.name, output.meter->take()});
    }
    return levels;
}

} // namespace fadewell::demo
