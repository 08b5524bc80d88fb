// What becomes of devices and defaults that go, and of those that come back.

#include "platform/linux/pipewire/DeviceTable.h"
#include "platform/linux/pipewire/ParameterParsing.h"

#include <algorithm>
#include <utility>

namespace fadewell::pipewire {
namespace {

// Stands in while there is no output, and goes because there is one: who plays on it moves there.
constexpr auto dummyOutput = "auto_null";

} // namespace

void DeviceTable::nodeRemoved(const GraphNode& node)
{
    const std::string uid = pipewire::text(node.props, PW_KEY_NODE_NAME);
    const auto device = deviceForNodeName(uid);
    if (!device || devices_.at(*device).node != node.id) {
        return;
    }
    freeze(*device, frozen_.start());
    refreshDefaults();
    // Another one of the same name steps in.
    if (const GraphNode* const other = graph_.nodeNamed(uid)) {
        nodeChanged(*other);
    }
}

void DeviceTable::metadataChanged(std::uint32_t subject,
                                  const std::string& /*key*/,
                                  const std::optional<std::string>& /*value*/)
{
    if (subject == PW_ID_CORE) {
        refreshDefaults();
    }
}

void DeviceTable::metadataAvailable(bool isAvailable)
{
    missing_.reset();
    if (!isAvailable) {
        const double until = frozen_.start();
        for (Default* const chosen : {&defaultOutput_, &defaultInput_}) {
            if (chosen->device != kAudioObjectUnknown) {
                chosen->frozenUntil = until;
            }
        }
    }
    refreshDefaults();
}

void DeviceTable::disconnected()
{
    const double until = frozen_.start();
    for (const AudioObjectID object : order_) {
        if (!isFrozen(object)) {
            freeze(object, until);
        }
    }
}

bool DeviceTable::isFrozen(AudioObjectID device) const
{
    const auto found = devices_.find(device);
    return found != devices_.end() && found->second.frozenUntil;
}

void DeviceTable::freeze(AudioObjectID object, double until)
{
    Device& device = devices_.at(object);
    device.node = SPA_ID_INVALID;
    device.frozenUntil = until;
    if (const auto written = written_.find(object); written != written_.end()) {
        written->second.isDue = true;
    }
    for (Default* const chosen : {&defaultOutput_, &defaultInput_}) {
        if (chosen->device == object && device.uid != dummyOutput) {
            chosen->frozenUntil = until;
        }
    }
}

void DeviceTable::thaw()
{
    std::vector<AudioObjectID> lost;
    for (const AudioObjectID object : std::vector(order_)) {
        const Device& device = devices_.at(object);
        if (!device.frozenUntil || !frozen_.isOver(*device.frozenUntil)) {
            continue;
        }
        // What is back by now is taken as it is.
        const GraphNode* const node = graph_.nodeNamed(device.uid);
        if (node != nullptr && isDevice(*node)) {
            update(*node, /*isForced=*/true);
        }
        if (device.frozenUntil) {
            lost.push_back(object);
        }
    }
    for (const AudioObjectID object : lost) {
        lose(object);
    }
    if (!lost.empty()) {
        listeners_.notify(kAudioObjectSystemObject, kAudioHardwarePropertyDevices);
    }
    refreshDefaults();
    if (!lost.empty()) {
        tellChanged();
    }
}

void DeviceTable::lose(AudioObjectID object)
{
    Device& device = devices_.at(object);
    device.isAlive = false;
    device.frozenUntil.reset();
    std::erase(order_, object);
    listeners_.notify(object, kAudioDevicePropertyDeviceIsAlive);
}

/// A node describes itself in several messages, and what is missing would show as a change.
bool DeviceTable::isAsComplete(const GraphNode& node, const Device& before) const
{
    const auto card = number(node.props, PW_KEY_DEVICE_ID);
    const GraphDevice* const found =
        card ? graph_.device(static_cast<std::uint32_t>(*card)) : nullptr;
    const bool hasOutput = !before.outputStreams.empty();
    return (!card || (found != nullptr && found->hasInfo)) &&
           (!before.hasRoute || routeOf(node, hasOutput) != nullptr) &&
           (before.volume.channels.empty() || !node.volume.channels.empty());
}

void DeviceTable::refreshDefaults()
{
    const auto named = [this](const char* key) {
        const auto json = graph_.metadataValue(PW_ID_CORE, key);
        return json ? parseDefaultName(*json).value_or("") : std::string();
    };
    defaultSinkName_ = named("default.audio.sink");
    if (refreshDefault(defaultOutput_, withScope(defaultSinkName_, &Device::outputStreams))) {
        listeners_.notify(kAudioObjectSystemObject, kAudioHardwarePropertyDefaultOutputDevice);
        tellChanged();
    }
    defaultSourceName_ = named("default.audio.source");
    if (refreshDefault(defaultInput_, withScope(defaultSourceName_, &Device::inputStreams))) {
        listeners_.notify(kAudioObjectSystemObject, kAudioHardwarePropertyDefaultInputDevice);
    }
    missing_.update(graph_.hasMetadata() && isDefaultMissing());
}

bool DeviceTable::isDefaultMissing() const
{
    const auto isMissing = [this](const std::string& name, auto streams) {
        const bool isNamed =
            graph_.nodeNamed(name) != nullptr && withScope(name, streams) != kAudioObjectUnknown;
        return !isNamed && std::any_of(order_.begin(), order_.end(), [&](AudioObjectID object) {
            const Device& device = devices_.at(object);
            return !device.frozenUntil && !(device.*streams).empty();
        });
    };
    return isMissing(defaultSinkName_, &Device::outputStreams) ||
           isMissing(defaultSourceName_, &Device::inputStreams);
}

bool DeviceTable::refreshDefault(Default& chosen, AudioObjectID named)
{
    const auto old = devices_.find(chosen.device);
    const bool isReplaced =
        old != devices_.end() && old->second.uid == dummyOutput && named != kAudioObjectUnknown;
    // A session manager that starts names one after the other until it has found them all.
    if ((isFrozen(chosen.device) && !isReplaced) ||
        (chosen.frozenUntil && !frozen_.isOver(*chosen.frozenUntil)))
    {
        return false;
    }
    chosen.frozenUntil.reset();
    return std::exchange(chosen.device, named) != named;
}

void DeviceTable::remember(AudioObjectID object, const NodeVolume& wanted)
{
    const Device& device = devices_.at(object);
    Written& written = written_[object];
    written.volume = written.volume.with(wanted);
    written.isOnRoute = device.hasRoute;
    written.isDue = !device.isAlive || device.frozenUntil;
    if (const auto* node = graph_.node(device.node)) {
        written.toldBefore = node->reportedVolume;
    }
}

/// The last word on what was written is whoever's who wrote after us. A server that ends says
/// nothing any more, and the old state shows again.
void DeviceTable::follow(AudioObjectID object, const GraphNode& node)
{
    const auto found = written_.find(object);
    const NodeVolume& volume = node.volume;
    if (found == written_.end() || found->second.isDue || volume.channels.empty() ||
        found->second.toldBefore == node.reportedVolume)
    {
        return;
    }
    if (putRight(object, found->second, node)) {
        return;
    }
    found->second.toldBefore.reset();
    NodeVolume& written = found->second.volume;
    written.channels = written.channels.empty() ? written.channels : volume.channels;
    written.isMuted = written.hasMute && volume.isMuted;
}

/// The session manager recalls what it saved of a device that comes back, which may be from before
/// we wrote; it is told once.
bool DeviceTable::putRight(AudioObjectID object, Written& written, const GraphNode& node)
{
    const bool isRecalled = written.recallsUntil && !frozen_.isOver(*written.recallsUntil) &&
                            node.reportedVolume.with(written.volume) != node.reportedVolume;
    if (!isRecalled) {
        return false;
    }
    written.recallsUntil.reset();
    written.toldBefore = node.reportedVolume;
    return write(object, node.id, written.volume) >= 0;
}

/// Writes again what was written to the device before it went, once it can take it; true when the
/// graph has told of it meanwhile.
bool DeviceTable::giveBack(AudioObjectID object, const GraphNode& node)
{
    const auto found = written_.find(object);
    if (found == written_.end() || !found->second.isDue || node.volume.channels.empty() ||
        (found->second.isOnRoute && routeOf(node, false) == nullptr))
    {
        return false;
    }
    found->second.isDue = false;
    found->second.toldBefore = node.reportedVolume;
    found->second.recallsUntil = frozen_.start();
    const NodeVolume& wanted = found->second.volume;
    return node.volume.with(wanted) != node.volume && write(object, node.id, wanted) >= 0;
}

} // namespace fadewell::pipewire
