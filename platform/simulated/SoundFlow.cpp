#include "platform/simulated/SoundFlow.h"

#include "audio/render.h"

#include <algorithm>

namespace fadewell {
namespace {

bool covers(const TapDescription& description, AudioObjectID process)
{
    const bool isListed = std::ranges::count(description.processes, process) > 0;
    return isListed != description.isExclusive;
}

void mix(const std::vector<float>& from, std::vector<float>& into)
{
    const auto count = std::min(from.size(), into.size());
    for (std::size_t i = 0; i < count; ++i) {
        into[i] += from[i];
    }
}

void mix(const StereoBlock& from, StereoBlock& into)
{
    mix(from.left, into.left);
    mix(from.right, into.right);
}

StereoBlock silence(std::uint32_t frames)
{
    return {std::vector<float>(frames), std::vector<float>(frames)};
}

} // namespace

void SoundFlow::PlannedCall::run()
{
    const AudioTimeStamp time{.mSampleTime = procedure->sampleTime, .mHostTime = 0, .mFlags = 1};
    procedure->function(procedure->device,
                        &time,
                        inputBuffers.list(),
                        &time,
                        outputBuffers.list(),
                        &time,
                        procedure->client);
}

HeardSound SoundFlow::directSound(const PlayedSound& played, std::uint32_t frames)
{
    HeardSound heard;
    for (const auto& [id, object] : objects_.all()) {
        if (std::holds_alternative<SimulatedDevice>(object.detail)) {
            heard[id] = silence(frames);
        }
    }
    for (const auto& [id, sound] : played) {
        const auto* process = objects_.get<SimulatedProcess>(id);
        if (!process || !process->isRunningOutput || isMuted(id)) {
            continue;
        }
        for (const AudioObjectID device : objects_.outputDevices(*process)) {
            if (const auto found = heard.find(device); found != heard.end()) {
                mix(sound, found->second);
            }
        }
    }
    return heard;
}

std::vector<SoundFlow::PlannedCall> SoundFlow::plan(const PlayedSound& played, std::uint32_t frames)
{
    std::vector<PlannedCall> calls;
    for (const auto& [id, procedure] : procedures_) {
        const AudioObjectID output = realDevice(procedure->device);
        if (!procedure->isStarted || procedure->isStalled || output == kAudioObjectUnknown) {
            continue;
        }
        PlannedCall call{procedure, output, inputFor(procedure->device, played, frames), {}};
        const auto channels = objects_.get<SimulatedDevice>(output)->outputChannels;
        addChannels(call.outputBuffers, channels, frames);
        calls.push_back(std::move(call));
    }
    return calls;
}

void SoundFlow::collect(PlannedCall& call, std::uint32_t frames, HeardSound& heard)
{
    const auto found = heard.find(call.output);
    ChannelRef left;
    if (found == heard.end() || !find_channel(call.outputBuffers.list(), 0, &left)) {
        return;
    }
    ChannelRef right;
    if (!find_channel(call.outputBuffers.list(), 1, &right)) {
        right = left;
    }
    for (std::uint32_t i = 0; i < std::min(frames, left.frames); ++i) {
        found->second.left[i] += left.samples[i * left.stride];
        found->second.right[i] += right.samples[i * right.stride];
    }
}

bool SoundFlow::isMuted(AudioObjectID process)
{
    return std::ranges::any_of(objects_.all(), [&](const auto& entry) {
        const auto* tap = std::get_if<SimulatedTap>(&entry.second.detail);
        if (!tap || !isCapturePermitted_ || !covers(tap->description, process)) {
            return false;
        }
        return tap->description.muteBehavior == TapMuteBehavior::muted ||
               (tap->description.muteBehavior == TapMuteBehavior::mutedWhenTapped && isRead(*tap));
    });
}

bool SoundFlow::isRead(const SimulatedTap& tap)
{
    return std::ranges::any_of(procedures_, [&](const auto& entry) {
        const auto* aggregate = objects_.get<SimulatedAggregate>(entry.second->device);
        return entry.second->isStarted && aggregate &&
               std::ranges::any_of(aggregate->description.taps, [&](const auto& subTap) {
                   return subTap.uid == tap.description.uuid;
               });
    });
}

StereoBlock
SoundFlow::tapped(const SimulatedTap& tap, const PlayedSound& played, std::uint32_t frames)
{
    auto sound = silence(frames);
    for (const auto& [id, block] : played) {
        const auto* process = objects_.get<SimulatedProcess>(id);
        if (process && process->isRunningOutput && isCapturePermitted_ &&
            covers(tap.description, id)) {
            mix(block, sound);
        }
    }
    return sound;
}

AudioObjectID SoundFlow::realDevice(AudioObjectID device)
{
    const auto* aggregate = objects_.get<SimulatedAggregate>(device);
    const AudioObjectID real =
        aggregate ? objects_.deviceForUID(aggregate->description.master) : device;
    return objects_.get<SimulatedDevice>(real) && objects_.isAlive(real) ? real
                                                                         : kAudioObjectUnknown;
}

BufferList
SoundFlow::inputFor(AudioObjectID device, const PlayedSound& played, std::uint32_t frames)
{
    BufferList buffers;
    const auto* aggregate = objects_.get<SimulatedAggregate>(device);
    if (!aggregate) {
        return buffers;
    }
    for (const auto& subTap : aggregate->description.taps) {
        const auto* tap = objects_.get<SimulatedTap>(objects_.tapForUUID(subTap.uid));
        if (!tap) {
            continue;
        }
        const auto sound = tapped(*tap, played, frames);
        const auto first = buffers.count();
        addChannels(buffers, 2, frames);
        for (std::uint32_t i = 0; i < frames; ++i) {
            buffers.samples(first)[isInterleaved_ ? 2 * i : i] = sound.left[i];
            buffers.samples(buffers.count() - 1)[isInterleaved_ ? 2 * i + 1 : i] = sound.right[i];
        }
    }
    return buffers;
}

void SoundFlow::addChannels(BufferList& buffers, std::uint32_t channels, std::uint32_t frames) const
{
    if (isInterleaved_) {
        buffers.add(channels, frames);
        return;
    }
    for (std::uint32_t channel = 0; channel < channels; ++channel) {
        buffers.add(1, frames);
    }
}

} // namespace fadewell
