#include "platform/linux/pipewire/ProcessTable.h"

#include <algorithm>

namespace fadewell::pipewire {

std::optional<PropertyBytes> ProcessTable::value(AudioObjectID object,
                                                 const AudioObjectPropertyAddress& address) const
{
    const auto found = processes_.find(object);
    if (found == processes_.end()) {
        return std::nullopt;
    }
    const Process& process = found->second;
    switch (address.mSelector) {
    case kAudioProcessPropertyPID:
        return bytesOf(process.pid);
    case kAudioProcessPropertyIsRunning:
        return bytesOf(std::uint32_t{process.isRunningOutput || process.isRunningInput});
    case kAudioProcessPropertyIsRunningOutput:
        return bytesOf(std::uint32_t{process.isRunningOutput});
    case kAudioProcessPropertyIsRunningInput:
        return bytesOf(std::uint32_t{process.isRunningInput});
    case kAudioProcessPropertyDevices:
        return bytesOf(address.mScope == kAudioObjectPropertyScopeInput
                           ? std::vector<AudioObjectID>{}
                           : process.outputDevices);
    default:
        return std::nullopt;
    }
}

std::optional<std::string> ProcessTable::bundleID(AudioObjectID process) const
{
    const auto found = processes_.find(process);
    return found == processes_.end() ? std::nullopt : found->second.bundleID;
}

std::optional<std::int32_t> ProcessTable::pid(AudioObjectID process) const
{
    const auto found = processes_.find(process);
    return found == processes_.end() ? std::nullopt : std::optional(found->second.pid);
}

std::vector<std::uint32_t> ProcessTable::outputStreamNodes(AudioObjectID process) const
{
    std::vector<std::pair<std::uint64_t, std::uint32_t>> bySerial;
    const auto owner = pid(process);
    for (const auto& [node, stream] : streams_) {
        if (owner == stream.pid && stream.isTappable()) {
            bySerial.emplace_back(stream.serial, node);
        }
    }
    std::sort(bySerial.begin(), bySerial.end());
    std::vector<std::uint32_t> nodes;
    for (const auto& [serial, node] : bySerial) {
        nodes.push_back(node);
    }
    return nodes;
}

std::optional<AudioObjectID> ProcessTable::processForNode(std::uint32_t node) const
{
    const auto stream = streams_.find(node);
    if (stream == streams_.end()) {
        return std::nullopt;
    }
    const auto found = std::find_if(processes_.begin(), processes_.end(), [&](const auto& entry) {
        return entry.second.pid == stream->second.pid;
    });
    return found == processes_.end() ? std::nullopt : std::optional(found->first);
}

std::vector<UntappableProcess> ProcessTable::untappable() const
{
    std::vector<UntappableProcess> list;
    for (const AudioObjectID object : order_) {
        const Process& process = processes_.at(object);
        const auto found = std::find_if(streams_.begin(), streams_.end(), [&](const auto& entry) {
            const Stream& stream = entry.second;
            return stream.pid == process.pid && stream.kind == StreamKind::output &&
                   stream.untappable && stream.isRunning;
        });
        if (found != streams_.end()) {
            AudioProcess audio;
            audio.id = object;
            audio.pid = process.pid;
            audio.bundleID = process.bundleID;
            audio.isRunningOutput = process.isRunningOutput;
            audio.isRunningInput = process.isRunningInput;
            audio.outputDeviceIDs = process.outputDevices;
            list.push_back({std::move(audio), *found->second.untappable});
        }
    }
    return list;
}

} // namespace fadewell::pipewire
