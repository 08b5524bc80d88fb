// Keeps apps from being heard wrong before their path stands.

#include "platform/linux/pipewire/StreamRules.h"
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

StandingTaps::Host Taps::standingHost()
{
    StandingTaps::Host host;
    host.makeStreams = [this](const std::string& output) {
        return newStandingStreams(output);
    };
    host.retire = [this](AudioObjectID tap, std::unique_ptr<TapStreams> streams) {
        retire(tap, std::move(streams));
    };
    host.isExpected = [this](const std::string& appID) {
        return isExpected(appID);
    };
    host.isCapturePermitted = [this] {
        return isCapturePermitted();
    };
    return host;
}

void Taps::setGatedApps(std::vector<GatedApp> apps)
{
    const Connection::Lock lock(connection_);
    levels_.setGatedApps(std::move(apps));
    standing_.followLevels();
}

void Taps::setLoweredStarts(std::optional<LoweredStarts> lowered)
{
    const Connection::Lock lock(connection_);
    levels_.setLoweredStarts(std::move(lowered));
    standing_.followLevels();
}

void Taps::followDevices()
{
    standing_.followLevels();
}

void Taps::clientChanged(const GraphClient& client)
{
    if (!levels_.isAny() && taps_.empty()) {
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
        isNew && !tapFor({owner->process, owner->appID}) ? levels_.of(owner->appID) : std::nullopt;
    if (level) {
        standing_.forApp(*level, SPA_ID_INVALID); // Awake by the time that its stream comes.
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

void Taps::expectAnother(const GraphNode& ended)
{
    const auto client = clients_.find(clientOf(ended));
    const bool wasRouted = router_.tapOf(ended.id) != 0;
    if (wasRouted && client != clients_.end() && isConcerned(client->second.appID) &&
        find(ended.props, PW_KEY_CLIENT_API) == "pipewire-pulse")
    {
        starts_.expectAnotherPulseStream();
    }
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

void Taps::settingsChanged()
{
    keeper_.letGo(); // Maybe the cycles have been chosen by hand.
}

void Taps::linkChanged(const GraphLink& /*link*/)
{
    keeper_.linkChanged();
    standing_.followLinks();
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
    const auto level = levels_.of(announced->second.appID);
    const auto* standing = level ? standing_.forApp(*level, node) : nullptr;
    return standing ? std::optional(Starts::Target{
                          standing->id, standing->streams->name(), standing_.isLinked(*standing)})
                    : std::nullopt;
}

bool Taps::carries(const TapObject& tap)
{
    return tap.streams && tap.takesStreams() && (tap.activeProcedure != 0 || tap.standIn);
}

bool Taps::isExpected(const std::string& appID) const
{
    return std::any_of(announced_.begin(), announced_.end(), [&](const auto& entry) {
        const auto& [node, owner] = entry;
        return owner.appID == appID && (starts_.isUnderWay(node) || router_.tapOf(node) == 0);
    });
}

bool Taps::isConcerned(const std::string& appID) const
{
    return !appID.empty() &&
           (levels_.of(appID) || std::any_of(taps_.begin(), taps_.end(), [&](const auto& entry) {
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

bool Taps::adopt(TapObject& tap, const std::string& output)
{
    auto standing = tap.takesStreams() ? standing_.take(appOf(tap)) : nullptr;
    if (!standing) {
        return false;
    }
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
    const auto level = tap.takesStreams() ? levels_.of(appOf(tap)) : std::nullopt;
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
    if (!tap.streams || !tap.standIn || !levels_.of(app) || !isCapturePermitted() ||
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
    standing_.add(std::move(standing));
    return true;
}

} // namespace fadewell::pipewire
