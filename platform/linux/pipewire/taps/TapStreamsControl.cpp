#include "platform/linux/pipewire/taps/TapNames.h"
#include "platform/linux/pipewire/taps/Taps.h"

#include <algorithm>
#include <utility>

namespace fadewell::pipewire {
namespace {

constexpr double beatSeconds = 1.0;

// New streams run within some cycles; then the first sound that enters them isn't lost.
constexpr double runUpSeconds = 0.300;
constexpr double lookAgainSeconds = 0.002;

} // namespace

bool Taps::makeStreams(TapObject& tap, const std::string& output)
{
    tap.streams = newStreams(tap.description.name, output, !tap.takesStreams());
    tap.output = output;
    tap.runsBy = now() + runUpSeconds;
    if (tap.streams) {
        tap.streams->onChanged([this, id = tap.id] { streamsChanged(id); });
    }
    return tap.streams != nullptr;
}

std::unique_ptr<TapStreams>
Taps::newStreams(const std::string& title, const std::string& output, bool listensOnly)
{
    TapStreams::Options options;
    options.name = tapNodeName(journal_.owner(), nextStreams_++);
    options.title = title;
    options.target = output;
    options.listensOnly = listensOnly;
    options.sampleRate = devices_.graphRate();
    return TapStreams::create(connection_, options, nullptr);
}

std::unique_ptr<TapStreams> Taps::newStandingStreams(const std::string& output)
{
    auto streams = newStreams("Fadewell standby", output, false);
    if (streams) {
        streams->onChanged([this] { starts_.advance(); });
    }
    return streams;
}

void Taps::streamsChanged(AudioObjectID tap)
{
    listeners_.notify(tap, kAudioTapPropertyFormat);
    starts_.advance();
    connection_.signal();
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
    bool isAnyWaiting = false;
    for (const auto node : wanted) {
        if (!isRunning(node)) {
            tap.untouched.erase(node);
        }
        if (router_.tapOf(node) == tap.id || tap.untouched.contains(node) ||
            starts_.isUnderWay(node) || !router_.canMove(node))
        {
            continue;
        }
        // After a restart of the session manager a stream may run that is linked to nothing.
        const bool isHeard = isRunning(node) && !graph_.linksBetween(node, SPA_ID_INVALID).empty();
        if (isHeard && (!isRunUp(tap) || !isQuietMoment(*tap.streams))) {
            isAnyWaiting = true;
            continue;
        }
        if (isHeard && router_.tapOf(node) == 0 && !hasRunningStream(tap)) {
            tap.streams->render().blendIn();
        }
        router_.attach(node, tap.id, tap.streams->name());
    }
    tap.streams->render().setAwaiting(isAnyWaiting);
}

bool Taps::isRunUp(const TapObject& tap)
{
    const auto* sink = graph_.nodeNamed(tap.output);
    const bool runs = !sink || sink->state != PW_NODE_STATE_RUNNING || tap.streams->isFlowing();
    if (!runs && now() < tap.runsBy) {
        quietTimer_.setInterval(lookAgainSeconds);
        return false;
    }
    return true;
}

bool Taps::isQuietMoment(const TapStreams& streams)
{
    const double wait = streams.untilQuietMoment();
    if (wait > 0 && !quietTimer_.isRunning()) {
        quietTimer_.setInterval(wait);
    }
    return wait <= 0;
}

std::vector<std::uint32_t> Taps::wantedStreams(const TapObject& tap) const
{
    std::vector<std::uint32_t> nodes;
    if (!tap.takesStreams()) {
        return nodes;
    }
    for (const auto process : tap.description.processes) {
        const auto streams = processes_.outputStreamNodes(process);
        nodes.insert(nodes.end(), streams.begin(), streams.end());
    }
    // What was led into the tap before the engine knows of it, perhaps of a process it hasn't
    // named.
    for (const auto node : router_.attachedTo(tap.id)) {
        if (announced_.contains(node) && std::find(nodes.begin(), nodes.end(), node) == nodes.end())
        {
            nodes.push_back(node);
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
        const auto active = procedures_.find(tap.activeProcedure);
        if (active == procedures_.end()) {
            continue;
        }
        if (!tap.streams) {
            // Frozen, not stuck; and without streams no audio thread is inside the procedure.
            TapRender stillness(devices_.graphRate());
            stillness.setProcedure(&active->second->procedure);
            stillness.heartbeat(AudioTimeStamp{});
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
