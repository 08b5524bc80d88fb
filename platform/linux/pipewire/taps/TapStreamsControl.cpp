#include "platform/linux/pipewire/taps/Taps.h"

#include <algorithm>
#include <unistd.h>
#include <utility>

namespace fadewell::pipewire {
namespace {

constexpr double beatSeconds = 1.0;

} // namespace

bool Taps::makeStreams(TapObject& tap, const std::string& output)
{
    TapStreams::Options options;
    options.name =
        "fadewell.tap." + std::to_string(getpid()) + "." + std::to_string(nextStreams_++);
    options.title = tap.description.name;
    options.target = output;
    options.listensOnly = !tap.takesStreams();
    options.sampleRate = devices_.graphRate();
    auto changed = [this, id = tap.id] {
        listeners_.notify(id, kAudioTapPropertyFormat);
        connection_.signal();
    };
    tap.streams = TapStreams::create(connection_, options, std::move(changed));
    tap.output = output;
    return tap.streams != nullptr;
}

void Taps::dropStreams()
{
    for (auto& [id, tap] : taps_) {
        tap.streams = nullptr;
        tap.untouched.clear();
    }
    retired_.clear();
    router_.forgetAll();
    updateTimers();
    isRefused_ = false;
}

void Taps::restoreStreams()
{
    isRefused_ = false;
    for (auto& [id, tap] : taps_) {
        const bool isUsed = std::any_of(aggregates_.begin(),
                                        aggregates_.end(),
                                        [&](const auto& entry) { return entry.second.tap == id; });
        if (!isUsed || tap.streams || !makeStreams(tap, tap.output)) {
            continue;
        }
        if (const auto active = procedures_.find(tap.activeProcedure); active != procedures_.end())
        {
            tap.streams->render().setProcedure(&active->second->procedure);
        }
    }
    routeAll();
}

void Taps::routeAll()
{
    for (auto& [id, tap] : taps_) {
        route(tap);
    }
}

void Taps::route(TapObject& tap)
{
    if (!tap.streams || tap.activeProcedure == 0 || !tap.takesStreams()) {
        return;
    }
    const auto wanted = wantedStreams(tap);
    for (const auto node : router_.attachedTo(tap.id)) {
        if (std::find(wanted.begin(), wanted.end(), node) == wanted.end()) {
            router_.release(node, tap.id);
        }
    }
    for (const auto node : wanted) {
        if (!isRunning(node)) {
            tap.untouched.erase(node);
        }
        if (router_.tapOf(node) == tap.id || tap.untouched.contains(node) || !router_.canMove(node))
        {
            continue;
        }
        if (isRunning(node) && !hasRunningStream(tap)) {
            tap.streams->render().blendIn();
        }
        router_.attach(node, tap.id, tap.streams->name());
    }
}

std::vector<std::uint32_t> Taps::wantedStreams(const TapObject& tap) const
{
    std::vector<std::uint32_t> nodes;
    if (tap.takesStreams()) {
        for (const auto process : tap.description.processes) {
            const auto streams = processes_.outputStreamNodes(process);
            nodes.insert(nodes.end(), streams.begin(), streams.end());
        }
    }
    return nodes;
}

bool Taps::isRunning(std::uint32_t node) const
{
    const auto* stream = graph_.node(node);
    return stream && stream->state == PW_NODE_STATE_RUNNING;
}

bool Taps::hasRunningStream(const TapObject& tap) const
{
    const auto nodes = router_.attachedTo(tap.id);
    return std::any_of(nodes.begin(), nodes.end(), [this](auto node) { return isRunning(node); });
}

bool Taps::playsOn(const TapObject& tap, std::string_view output) const
{
    const auto* sink = graph_.nodeNamed(output);
    const auto node = tap.streams ? tap.streams->outputNode() : SPA_ID_INVALID;
    if (!sink || node == SPA_ID_INVALID) {
        return false;
    }
    // While nothing plays a link stays as the session manager made it.
    const auto needed = hasRunningStream(tap) ? PW_LINK_STATE_ACTIVE : PW_LINK_STATE_INIT;
    const auto links = graph_.linksBetween(node, sink->id);
    return std::any_of(links.begin(), links.end(), [needed](const GraphLink* link) {
        return link->state >= needed;
    });
}

bool Taps::isStalled(const TapObject& tap) const
{
    return tap.streams &&
           (tap.streams->hasFailed() || (tap.silentTicks > 0 && tap.streams->isStreaming() &&
                                         hasRunningStream(tap) && playsOn(tap, tap.output)));
}

void Taps::updateTimers()
{
    const bool anyStarted =
        std::any_of(procedures_.begin(), procedures_.end(), [](const auto& entry) {
            return entry.second->procedure.isStarted.load();
        });
    beatTimer_.setInterval(anyStarted ? beatSeconds : 0);
    retireTimer_.setInterval(retired_.isEmpty() ? 0 : RetiredTaps::interval);
}

void Taps::beat()
{
    for (auto& [id, tap] : taps_) {
        if (!tap.streams || tap.activeProcedure == 0) {
            continue;
        }
        const auto calls = tap.streams->render().calls();
        const bool isSilent = std::exchange(tap.lastCalls, calls) == calls;
        tap.silentTicks = isSilent ? tap.silentTicks + 1 : 0;
        if (isSilent && !isStalled(tap)) {
            tap.streams->heartbeat();
            tap.lastCalls = tap.streams->render().calls();
        }
    }
}

} // namespace fadewell::pipewire
