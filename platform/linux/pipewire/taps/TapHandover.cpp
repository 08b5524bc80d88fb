#include "platform/linux/pipewire/taps/Taps.h"

#include <utility>

namespace fadewell::pipewire {
namespace {

// A fade of 10 ms and the longest quantum there usually is.
constexpr double fadeSeconds = 0.060;
constexpr double linkSeconds = 0.500;
constexpr double readySeconds = 0.500;

// The audio thread can't wake anybody.
constexpr double pollSeconds = 0.002;

} // namespace

OSStatus Taps::handOver(TapObject& tap, ProcedureObject& object)
{
    const auto output = aggregates_.at(object.aggregate).description.master;
    if (!devices_.deviceForNodeName(output)) {
        return kAudioHardwareBadDeviceError;
    }
    auto status = kAudioHardwareNoError;
    if (!tap.streams) {
        takeOver(tap, object, output);
        restoreStreams();
    } else {
        status =
            isStalled(tap) ? replaceStreams(tap, object, output) : moveStreams(tap, object, output);
    }
    if (status == kAudioHardwareNoError) {
        tap.untouched.clear();
        route(tap);
    }
    updateTimers();
    return status;
}

/// While the streams are gone with the session manager: they will come back as this.
void Taps::takeOver(TapObject& tap, ProcedureObject& object, const std::string& output)
{
    object.procedure.isStarted = true;
    tap.activeProcedure = object.id;
    tap.output = output;
}

OSStatus Taps::moveStreams(TapObject& tap, ProcedureObject& object, const std::string& output)
{
    const AudioObjectID tapID = tap.id;
    const std::string oldOutput = tap.output;
    const IOProcID oldProcedure = tap.activeProcedure;
    const bool isMoving = output != oldOutput || !playsOn(tap, output);
    if (isMoving) {
        fadeOut(tap);
        if (tap.streams) {
            connection_.waitFor(tap.streams->untilQuietMoment(), [] { return false; });
        }
    }
    if (!tap.streams) {
        return kAudioHardwareNotReadyError;
    }
    object.procedure.isStarted = true;
    tap.streams->render().setProcedure(&object.procedure);
    tap.activeProcedure = object.id;
    bool isThere = true;
    if (isMoving) {
        tap.isLeaving = true;
        retarget(tap, output);
        // Nothing to wait for while the output, or all of the session, is away for a moment.
        isThere = connection_.waitFor(linkSeconds, [&] {
            const auto found = taps_.find(tapID);
            return found != taps_.end() && (!found->second.streams || !graph_.nodeNamed(output) ||
                                            playsOn(found->second, output));
        });
        isThere = isThere || !tap.streams;
    }
    if (!isThere && tap.streams) {
        const auto old = procedures_.find(oldProcedure);
        tap.activeProcedure = old != procedures_.end() ? oldProcedure : 0;
        tap.streams->render().setProcedure(old != procedures_.end() ? &old->second->procedure
                                                                    : nullptr);
        object.procedure.isStarted = false;
        retarget(tap, oldOutput);
    }
    tap.isLeaving = false;
    if (tap.streams) {
        tap.streams->render().setFadedOut(false);
    }
    return isThere ? kAudioHardwareNoError : kAudioHardwareNotReadyError;
}

OSStatus Taps::replaceStreams(TapObject& tap, ProcedureObject& object, const std::string& output)
{
    auto old = std::exchange(tap.streams, nullptr);
    const bool isReady = makeStreams(tap, output) && connection_.waitFor(readySeconds, [&] {
        return tap.streams && tap.streams->isReady();
    });
    if (!isReady) {
        if (!graph_.hasMetadata()) {
            takeOver(tap, object, output);
            return kAudioHardwareNoError;
        }
        tap.streams = std::move(old);
        return kAudioHardwareNotReadyError;
    }
    object.procedure.isStarted = true;
    tap.streams->render().setProcedure(&object.procedure);
    tap.activeProcedure = object.id;
    tap.silentTicks = 0;
    old->render().setProcedure(nullptr);
    for (const auto node : router_.attachedTo(tap.id)) {
        router_.attach(node, tap.id, tap.streams->name());
    }
    retired_.addReplaced(std::move(old), now());
    return kAudioHardwareNoError;
}

void Taps::linkRemoved(const GraphLink& link)
{
    keeper_.linkChanged();
    forEachStreams([&](TapStreams& streams) {
        if (streams.outputNode() == link.outputNode) {
            waker_.watch();
        }
    });
    for (auto& [id, tap] : taps_) {
        if (tap.isLeaving && tap.streams && tap.streams->outputNode() == link.outputNode) {
            tap.streams->render().setFadedOut(false);
        }
    }
}

void Taps::fadeOut(TapObject& tap)
{
    if (!tap.streams->isStreaming()) {
        return;
    }
    tap.streams->render().setFadedOut(true);
    for (double waited = 0; waited < fadeSeconds; waited += pollSeconds) {
        if (!tap.streams || tap.streams->render().isFadedOut()) {
            return;
        }
        connection_.waitFor(pollSeconds, [] { return false; });
    }
}

} // namespace fadewell::pipewire
