#include "platform/linux/pipewire/DeviceTable.h"

#include "platform/linux/pipewire/StreamRules.h"
#include "platform/linux/pipewire/TransportRules.h"

#include <algorithm>
#include <utility>

namespace fadewell::pipewire {

namespace {

bool isOutputClass(std::string_view mediaClass)
{
    return mediaClass == "Audio/Sink" || mediaClass == "Audio/Duplex";
}

bool isInputClass(std::string_view mediaClass)
{
    return mediaClass == "Audio/Source" || mediaClass == "Audio/Source/Virtual" ||
           mediaClass == "Audio/Duplex";
}

std::string displayName(const Properties& node)
{
    for (const char* const key : {PW_KEY_NODE_DESCRIPTION, PW_KEY_NODE_NICK}) {
        if (const auto name = find(node, key)) {
            return std::string(*name);
        }
    }
    return text(node, PW_KEY_NODE_NAME);
}

} // namespace

DeviceTable::DeviceTable(Graph& graph, ObjectIDs& ids, ListenerTable& listeners, FrozenTime& frozen)
    : graph_(graph)
    , ids_(ids)
    , listeners_(listeners)
    , frozen_(frozen)
    , missing_(graph)
{
    const Connection::Lock lock(graph_.connection());
    graph_.addObserver(*this);
    frozen_.add(*this);
}

DeviceTable::~DeviceTable()
{
    const Connection::Lock lock(graph_.connection());
    graph_.removeObserver(*this);
    frozen_.remove(*this);
}

bool DeviceTable::isDevice(const GraphNode& node)
{
    const std::string_view mediaClass = find(node.props, PW_KEY_MEDIA_CLASS).value_or("");
    return node.hasInfo && (isOutputClass(mediaClass) || isInputClass(mediaClass)) &&
           find(node.props, PW_KEY_NODE_NAME) && !isOwnNode(node.props);
}

void DeviceTable::nodeChanged(const GraphNode& node)
{
    if (isDevice(node)) {
        update(node);
    }
}

void DeviceTable::deviceChanged(const GraphDevice& card)
{
    for (const auto& [id, node] : graph_.nodes()) {
        if (number(node.props, PW_KEY_DEVICE_ID) == card.id) {
            nodeChanged(node);
        }
    }
}

void DeviceTable::settingsChanged()
{
    for (const char* const key : {"clock.force-rate", "clock.rate"}) {
        const auto rate = number(graph_.settingsValue(key).value_or(""));
        if (rate && *rate > 0) {
            graphRate_ = static_cast<double>(*rate);
            break;
        }
    }
    for (const auto& [id, node] : graph_.nodes()) {
        nodeChanged(node);
    }
}

void DeviceTable::update(const GraphNode& node, bool isForced)
{
    Device after = describe(node);
    const AudioObjectID object = ids_.forDevice(after.uid);
    Device& device = devices_[object];
    const bool isAttached = device.isAlive && !device.frozenUntil;
    if ((isAttached && device.node != after.node) ||
        (device.frozenUntil && !isForced && !isAsComplete(node, device)) || giveBack(object, node))
    {
        return;
    }
    if (device.isAlive && after.volume.channels.empty()) {
        after.volume = device.volume; // It is told last.
    }
    const Device before = std::exchange(device, std::move(after));
    const bool isBack = !before.isAlive;
    if (isBack) {
        order_.push_back(object);
    }
    announce(object, before, device);
    follow(object, node);
    if (isBack) {
        listeners_.notify(kAudioObjectSystemObject, kAudioHardwarePropertyDevices);
    }
    if (!isAttached) {
        refreshDefaults();
    }
    if (!isAttached || before.rate != device.rate) {
        tellChanged();
    }
}

DeviceTable::Device DeviceTable::describe(const GraphNode& node)
{
    const std::string_view mediaClass = find(node.props, PW_KEY_MEDIA_CLASS).value_or("");
    const auto cardID = number(node.props, PW_KEY_DEVICE_ID);
    const GraphDevice* const card =
        cardID ? graph_.device(static_cast<std::uint32_t>(*cardID)) : nullptr;
    Device device;
    device.node = node.id;
    device.serial = node.serial;
    device.uid = pipewire::text(node.props, PW_KEY_NODE_NAME);
    device.name = displayName(node.props);
    device.isAlive = true;
    const bool hasOutput = isOutputClass(mediaClass);
    const GraphRoute* const route = routeOf(node, hasOutput);
    device.hasRoute = route != nullptr;
    device.isWritable =
        routeOf(node, false) == nullptr ? node.isWritable() : card && card->isWritable();
    device.transport = transportType(node.props, card ? card->props : Properties{}, route);
    device.rate = node.rate > 0 ? node.rate : graphRate();
    device.volume = node.volume;
    if (hasOutput) {
        device.dataSource = dataSource(device.transport, route);
        device.outputStreams = {ids_.forKey("output stream:" + device.uid)};
    }
    if (isInputClass(mediaClass)) {
        device.inputStreams = {ids_.forKey("input stream:" + device.uid)};
    }
    return device;
}

const GraphRoute* DeviceTable::routeOf(const GraphNode& node, bool isOutput) const
{
    const auto cardID = number(node.props, PW_KEY_DEVICE_ID);
    const auto profileDevice = number(node.props, "card.profile.device");
    const GraphDevice* const card =
        cardID ? graph_.device(static_cast<std::uint32_t>(*cardID)) : nullptr;
    if (card == nullptr || !profileDevice) {
        return nullptr;
    }
    const auto found =
        std::find_if(card->routes.begin(), card->routes.end(), [&](const GraphRoute& route) {
            return route.isOutput == isOutput && route.device >= 0 &&
                   static_cast<std::uint64_t>(route.device) == *profileDevice;
        });
    return found == card->routes.end() ? nullptr : &*found;
}

void DeviceTable::announce(AudioObjectID object, const Device& before, const Device& after)
{
    constexpr auto output = kAudioObjectPropertyScopeOutput;
    constexpr auto input = kAudioObjectPropertyScopeInput;
    const auto tell = [&](bool isChanged, AudioObjectPropertySelector selector, auto... scope) {
        if (isChanged) {
            listeners_.notify(object, selector, scope...);
        }
    };
    tell(before.name != after.name, kAudioObjectPropertyName);
    tell(before.transport != after.transport, kAudioDevicePropertyTransportType);
    tell(before.dataSource != after.dataSource, kAudioDevicePropertyDataSource, output);
    tell(before.rate != after.rate, kAudioDevicePropertyNominalSampleRate);
    tell(before.outputStreams != after.outputStreams, kAudioDevicePropertyStreams, output);
    tell(before.inputStreams != after.inputStreams, kAudioDevicePropertyStreams, input);
    tell(before.volume.channels != after.volume.channels || before.isWritable != after.isWritable,
         kAudioDevicePropertyVolumeScalar,
         input);
    tell(before.volume.isMuted != after.volume.isMuted ||
             before.volume.hasMute != after.volume.hasMute,
         kAudioDevicePropertyMute,
         input);
    tell(before.isAlive != after.isAlive, kAudioDevicePropertyDeviceIsAlive);
}

AudioObjectID DeviceTable::withScope(std::string_view name,
                                     std::vector<AudioObjectID> Device::*streams) const
{
    const auto device = deviceForNodeName(name);
    // A sink's monitor may be the default source: that is no input.
    return device && !(devices_.at(*device).*streams).empty() ? *device : kAudioObjectUnknown;
}

void DeviceTable::tellChanged()
{
    for (const auto& changed : changed_) {
        changed();
    }
}

} // namespace fadewell::pipewire
