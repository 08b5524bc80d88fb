// Keeps apps from being heard wrong before their path stands.

#include "platform/linux/pipewire/StreamRules.h"
#include "platform/linux/pipewire/StreamTargets.h"
#include "platform/linux/pipewire/taps/Taps.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace fadewell::pipewire {
namespace {

std::uint32_t clientOf(const GraphNode& node)
{
    return static_cast<std::uint32_t>(
        number(node.props, PW_KEY_CLIENT_ID).value_or(SPA_ID_INVALID));
}

} // namespace

void Taps::setGatedApps(std::vector<GatedApp> apps)
{
    const Connection::Lock lock(connection_);
    gated_.clear();
    for (auto& app : apps) {
        const auto id = app.appID;
        gated_.emplace(id, std::move(app));
    }
    updateStanding();
}

void Taps::setLoweredStarts(std::optional<LoweredStarts> lowered)
{
    const Connection::Lock lock(connection_);
    lowered_ = std::move(lowered);
    updateStanding();
}

void Taps::updateStanding()
{
    std::erase_if(standing_, [this](const auto& standing) {
        const auto level = startLevel(standing->appID);
        if (level) {
            standing->standIn->setGain(level->gain);
            standing->standIn->setDuck(level->duck);
            const auto streams = router_.attachedTo(standing->id);
            send(*standing, outputFor(*level, streams.empty() ? SPA_ID_INVALID : *streams.begin()));
        } else if (!standing->appID.empty()) {
            dismiss(*standing);
        }
        return !level && !standing->appID.empty();
    });
    keepOneFree();
}

void Taps::followDevices()
{
    for (const auto& standing : standing_) {
        const auto level = startLevel(standing->appID);
        const auto* output = level && level->outputDeviceUID ? &*level->outputDeviceUID : nullptr;
        if (output && devices_.deviceForNodeName(*output)) {
            send(*standing, *output);
        }
    }
}

void Taps::clientChanged(const GraphClient& client)
{
    if (!isGateClosed() && taps_.empty()) {
        return;
    }
    const auto owner = processes_.ownerOf(client);
    if (!owner) {
        return;
    }
    const bool isNew =
        clients_.insert_or_assign(client.id, Announced{owner->process, owner->appID}).second;
    const bool speaksPulse = find(client.props, PW_KEY_CLIENT_API) == "pipewire-pulse";
    if (isNew && speaksPulse && isConcerned(owner->appID)) {
        starts_.expectPulseStream();
    }
    const auto level =
        isNew && !tapFor({owner->process, owner->appID}) ? startLevel(owner->appID) : std::nullopt;
    if (level) {
        standingFor(*level, SPA_ID_INVALID); // Awake by the time that its stream comes.
    }
    for (const auto& [id, node] : graph_.nodes()) {
        if (clientOf(node) == client.id && !node.hasInfo) {
            announce(node);
        }
    }
}

void Taps::clientRemoved(const GraphClient& client)
{
    clients_.erase(client.id);
}

void Taps::nodeAppeared(const GraphNode& node)
{
    router_.appeared(node.id);
    announce(node);
    starts_.advance();
}

void Taps::nodeChanged(const GraphNode& node)
{
    const auto announced = announced_.find(node.id);
    if (announced != announced_.end() && node.hasInfo && !processes_.isTappable(node.id)) {
        announced_.erase(announced);
        router_.release(node.id, router_.tapOf(node.id));
        starts_.forget(node.id);
    }
    restoreStreams();
    starts_.advance();
}

void Taps::linkChanged(const GraphLink& /*link*/)
{
    for (const auto& standing : standing_) {
        const bool mayRest = standing->appID.empty() && isLinked(*standing);
        if (mayRest && !std::exchange(standing->isAsleep, true)) {
            standing->streams->setAsleep(true);
        }
    }
    starts_.advance();
}

std::optional<Taps::Announced> Taps::ownerOf(const GraphNode& stream)
{
    const auto id = clientOf(stream);
    if (const auto known = clients_.find(id); known != clients_.end()) {
        return known->second;
    }
    const auto* client = graph_.client(id);
    const auto owner = client ? processes_.ownerOf(*client) : std::nullopt;
    if (!owner) {
        return std::nullopt;
    }
    return clients_.emplace(id, Announced{owner->process, owner->appID}).first->second;
}

void Taps::announce(const GraphNode& node)
{
    if (announced_.contains(node.id) ||
        streamKind(node.props, connection_.clientID()) != StreamKind::output)
    {
        return;
    }
    if (const auto owner = ownerOf(node)) {
        announced_.emplace(node.id, *owner);
        if (startTarget(node.id)) {
            starts_.begin(node.id);
        } else {
            announced_.erase(node.id);
        }
    }
}

const TapObject* Taps::tapFor(const Announced& owner) const
{
    for (const auto& [id, tap] : taps_) {
        const auto& named = tap.description.processes;
        const bool isItsTap = std::find(named.begin(), named.end(), owner.process) != named.end() ||
                              (!owner.appID.empty() && appOf(tap) == owner.appID);
        if (isItsTap && tap.takesStreams()) {
            return &tap;
        }
    }
    return nullptr;
}

std::optional<Starts::Target> Taps::startTarget(std::uint32_t node)
{
    const auto announced = announced_.find(node);
    if (announced == announced_.end() || !isCapturePermitted() || !graph_.hasMetadata()) {
        return std::nullopt;
    }
    if (const auto* tap = tapFor(announced->second); tap && carries(*tap)) {
        const bool isReady = tap->streams->isReady() && playsOn(*tap, tap->output);
        return Starts::Target{tap->id, tap->streams->name(), isReady};
    }
    const auto level = startLevel(announced->second.appID);
    auto* standing = level ? standingFor(*level, node) : nullptr;
    return standing ? std::optional(Starts::Target{
                          standing->id, standing->streams->name(), isLinked(*standing)})
                    : std::nullopt;
}

bool Taps::carries(const TapObject& tap)
{
    return tap.streams && tap.takesStreams() && (tap.activeProcedure != 0 || tap.standIn);
}

bool Taps::isConcerned(const std::string& appID) const
{
    return !appID.empty() &&
           (startLevel(appID) || std::any_of(taps_.begin(), taps_.end(), [&](const auto& entry) {
                return carries(entry.second) && appOf(entry.second) == appID;
            }));
}

std::string Taps::appOf(const TapObject& tap) const
{
    for (const auto process : tap.description.processes) {
        if (auto app = processes_.bundleID(process)) {
            return *app;
        }
    }
    return {};
}

/// Absent for an app that sounds right by itself: at full level, on the output that it would play
/// on.
std::optional<StartLevel> Taps::startLevel(const std::string& appID) const
{
    StartLevel level{appID};
    if (lowered_ && !appID.empty() && !lowered_->exempt.contains(appID)) {
        level.duck = lowered_->duck;
    }
    if (const auto found = gated_.find(appID); found != gated_.end()) {
        level.gain = found->second.gain;
        level.outputDeviceUID = found->second.outputDeviceUID;
    }
    const auto& output = level.outputDeviceUID;
    const bool isRerouted =
        output && *output != devices_.defaultSinkName() && devices_.deviceForNodeName(*output);
    return level.gain != 1.0 || level.duck != 1.0 || isRerouted ? std::optional(std::move(level))
                                                                : std::nullopt;
}

std::string Taps::outputFor(const StartLevel& level, std::uint32_t node) const
{
    if (level.outputDeviceUID && devices_.deviceForNodeName(*level.outputDeviceUID)) {
        return *level.outputDeviceUID;
    }
    const auto* stream = graph_.node(node);
    auto own = router_.ownTarget(node);
    if (!own && stream) {
        own = currentTarget(graph_, *stream);
    }
    const auto* sink = own && !own->empty() ? targetNode(graph_, *own) : nullptr;
    return sink ? text(sink->props, PW_KEY_NODE_NAME) : std::string();
}

bool Taps::isLinked(const StandingTap& standing) const
{
    const auto& name = standing.output.empty() ? devices_.defaultSinkName() : standing.output;
    const auto* sink = graph_.nodeNamed(name);
    return sink && standing.streams->isReady() &&
           !graph_.linksBetween(standing.streams->outputNode(), sink->id).empty();
}

StandingTap* Taps::standingFor(const StartLevel& level, std::uint32_t node)
{
    const auto find = [this](const std::string& appID) {
        return std::find_if(standing_.begin(), standing_.end(), [&](const auto& standing) {
            return standing->appID == appID;
        });
    };
    auto found = find(level.appID);
    if (found == standing_.end()) {
        found = find({});
        if (found == standing_.end()) {
            makeStanding();
            found = find({});
        }
        if (found == standing_.end()) {
            return nullptr;
        }
        auto& standing = **found;
        standing.appID = level.appID;
        if (std::exchange(standing.isAsleep, false)) {
            standing.streams->setAsleep(false);
        }
        // Its ramp begins with its sound: a silent stand-in isn't called.
        standing.standIn =
            std::make_unique<StandIn>(level.gain, 1.0, standing.streams->sampleRate());
        standing.standIn->setDuck(level.duck);
        standing.streams->render().setProcedure(standing.standIn->procedure());
        refillTimer_.setInterval(refillSeconds);
    }
    send(**found, outputFor(level, node));
    return found->get();
}

void Taps::send(StandingTap& standing, const std::string& output)
{
    const auto node = standing.streams->outputNode();
    const auto value = output.empty() ? std::nullopt : std::optional(output);
    // What a session manager is told while it starts may be lost.
    const bool isLost = !output.empty() && graph_.metadataValue(node, "target.object") != value;
    if ((standing.output == output && !isLost) || node == SPA_ID_INVALID) {
        return;
    }
    if (graph_.setMetadata(node, "target.object", "", value) >= 0) {
        standing.output = output;
    }
}

/// A stream's own output is often told after the stream was sent to its standing tap.
void Taps::followOwnTarget(std::uint32_t node)
{
    for (const auto& standing : standing_) {
        const auto level = startLevel(standing->appID);
        if (level && router_.tapOf(node) == standing->id) {
            send(*standing, outputFor(*level, node));
        }
    }
}

bool Taps::adopt(TapObject& tap, const std::string& output)
{
    const auto app = appOf(tap);
    const auto found = std::find_if(standing_.begin(), standing_.end(), [&](const auto& standing) {
        return standing->appID == app;
    });
    if (app.empty() || !tap.takesStreams() || found == standing_.end()) {
        return false;
    }
    const auto standing = std::move(*found);
    standing_.erase(found);
    tap.streams = std::move(standing->streams);
    tap.standIn = std::move(standing->standIn);
    tap.streams->onChanged([this, id = tap.id] { streamsChanged(id); });
    router_.reassign(standing->id, tap.id);
    tap.output = standing->output;
    retarget(tap, output);
    return true;
}

void Taps::setStandIn(TapObject& tap, ProcedureObject& previous)
{
    if (!tap.streams) {
        return;
    }
    const auto level = tap.takesStreams() ? startLevel(appOf(tap)) : std::nullopt;
    auto standIn =
        level ? std::make_unique<StandIn>(level->gain, level->duck, tap.streams->sampleRate())
              : nullptr;
    auto* const next = standIn ? standIn->procedure() : nullptr;
    if (next) {
        next->predecessor = &previous.procedure;
    }
    tap.streams->render().setProcedure(next);
    tap.streams->synchronise();
    if (next) {
        next->predecessor = nullptr; // It is about to go, and a silent tap hasn't looked at it.
    }
    previous.procedure.predecessor = nullptr;
    tap.standIn = std::move(standIn);
}

bool Taps::standBy(TapObject& tap)
{
    const auto app = appOf(tap);
    if (!tap.streams || !tap.standIn || !startLevel(app) || !isCapturePermitted() ||
        router_.attachedTo(tap.id).empty())
    {
        return false;
    }
    auto standing = std::make_unique<StandingTap>();
    standing->id = ids_.next();
    standing->appID = app;
    standing->output = tap.output;
    standing->streams = std::move(tap.streams);
    standing->standIn = std::move(tap.standIn);
    standing->streams->onChanged([this] { starts_.advance(); });
    router_.reassign(tap.id, standing->id);
    standing_.push_back(std::move(standing));
    return true;
}

void Taps::dismiss(StandingTap& standing)
{
    standing.streams->render().setProcedure(nullptr);
    standing.streams->synchronise();
    retired_.add(standing.id, std::move(standing.streams), now());
    updateTimers();
}

void Taps::keepOneFree()
{
    const auto isUnused = [this](const StandingTap& standing) {
        const bool isExpected =
            std::any_of(announced_.begin(), announced_.end(), [&](const auto& entry) {
                return entry.second.appID == standing.appID;
            });
        return !isExpected && router_.attachedTo(standing.id).empty();
    };
    int free = 0;
    std::erase_if(standing_, [&](const auto& standing) {
        return isUnused(*standing) && (!standing->appID.empty() || !isGateClosed() || ++free > 1);
    });
    const bool hasOutput = devices_.defaultOutput() != kAudioObjectUnknown;
    if (free == 0 && isGateClosed() && hasOutput && graph_.hasMetadata() && isCapturePermitted()) {
        makeStanding();
    }
}

void Taps::makeStanding()
{
    auto standing = std::make_unique<StandingTap>();
    standing->id = ids_.next();
    standing->streams = newStreams(standingTitle, {}, false);
    if (standing->streams) {
        standing->streams->onChanged([this] { starts_.advance(); });
        standing_.push_back(std::move(standing));
    }
}

} // namespace fadewell::pipewire
