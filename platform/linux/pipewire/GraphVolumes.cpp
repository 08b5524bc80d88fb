#include "platform/linux/pipewire/Graph.h"
#include "platform/linux/pipewire/ParameterParsing.h"

#include <array>
#include <cerrno>
#include <utility>

namespace fadewell::pipewire {

namespace {

/// Echoes of what is written in a row, as a slider does, come one by one and late: for this long
/// after a write (in ns) the value written is shown instead.
constexpr long assumptionTime = 250 * SPA_NSEC_PER_MSEC;

/// Memory for one parameter; volumes of 64 channels fit well.
struct ParameterMemory {
    std::array<std::byte, 1024> bytes;
    spa_pod_builder builder = {};

    ParameterMemory()
    {
        spa_pod_builder_init(&builder, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    }
};

} // namespace

int Graph::setNodeParam(std::uint32_t node, std::uint32_t param, const spa_pod* value)
{
    pw_proxy* const proxy = bindings_.proxy(node);
    return proxy == nullptr ? -ENOENT
                            : pw_node_set_param(reinterpret_cast<pw_node*>(proxy), param, 0, value);
}

int Graph::setDeviceRoute(std::uint32_t device, const GraphRoute& route, const NodeVolume& volume)
{
    pw_proxy* const proxy = bindings_.proxy(device);
    if (proxy == nullptr) {
        return -ENOENT;
    }
    ParameterMemory memory;
    return pw_device_set_param(reinterpret_cast<pw_device*>(proxy),
                               SPA_PARAM_Route,
                               0,
                               buildRoute(memory.builder, route, volume));
}

int Graph::setNodeVolume(std::uint32_t node, const NodeVolume& volume)
{
    ParameterMemory memory;
    return setNodeParam(
        node, SPA_PARAM_Props, buildVolume(memory.builder, SPA_PARAM_Props, volume));
}

void Graph::assumeVolume(std::uint32_t node, const NodeVolume& volume)
{
    if (!nodes_.contains(node)) {
        return;
    }
    NodeVolume& assumed = assumed_[node];
    if (!volume.channels.empty()) {
        assumed.channels = volume.channels;
    }
    if (volume.hasMute) {
        assumed.isMuted = volume.isMuted;
        assumed.hasMute = true;
    }
    if (assumptionsEnd_ == nullptr) {
        assumptionsEnd_ = pw_loop_add_timer(connection_.loop(), &Graph::onAssumptionsEnd, this);
    }
    timespec later = {.tv_sec = 0, .tv_nsec = assumptionTime};
    pw_loop_update_timer(connection_.loop(), assumptionsEnd_, &later, nullptr, false);
    nodeUpdated(node);
}

NodeVolume Graph::shownVolume(const GraphNode& node) const
{
    NodeVolume shown = node.reportedVolume;
    const auto found = assumed_.find(node.id);
    if (found != assumed_.end() && !found->second.channels.empty()) {
        shown.channels = found->second.channels;
    }
    if (found != assumed_.end() && found->second.hasMute) {
        shown.isMuted = found->second.isMuted;
    }
    return shown;
}

void Graph::onAssumptionsEnd(void* data, std::uint64_t /*expirations*/)
{
    static_cast<Graph*>(data)->endAssumptions();
}

void Graph::endAssumptions()
{
    for (const auto& [node, volume] : std::exchange(assumed_, {})) {
        if (nodes_.contains(node)) {
            nodeUpdated(node);
        }
    }
}

} // namespace fadewell::pipewire
