#include "platform/linux/pipewire/taps/StandingTaps.h"

#include "platform/linux/pipewire/StreamTargets.h"

#include <algorithm>
#include <utility>

namespace fadewell::pipewire {
namespace {

// New nodes hold up the session manager's links: not while an app is on its way.
constexpr double refillSeconds = 0.150;

} // namespace

StandingTaps::StandingTaps(Graph& graph,
                           ObjectIDs& ids,
                           const DeviceTable& devices,
                           TapRouter& router,
                           const StartLevels& levels,
                           Host host)
    : graph_(graph)
    , ids_(ids)
    , devices_(devices)
    , router_(router)
    , levels_(levels)
    , host_(std::move(host))
    , refillTimer_(graph.connection(), [this] {
        refillTimer_.setInterval(0);
        keepOneFree();
    })
{}

StandingTap* StandingTaps::forApp(const StartLevel& level, std::uint32_t stream)
{
    auto* standing = find(level.appID);
    if (!standing) {
        auto* const free = find({});
        standing = free ? free : make();
        if (!standing) {
            return nullptr;
        }
        assign(*standing, level);
    }
    send(*standing, outputFor(level, stream));
    return standing;
}

void StandingTaps::assign(StandingTap& standing, const StartLevel& level)
{
    standing.appID = level.appID;
    if (std::exchange(standing.isAsleep, false)) {
        standing.streams->setAsleep(false);
    }
    // Its ramp begins with its sound: a silent stand-in isn't called.
    standing.standIn = std::make_unique<StandIn>(level.gain, 1.0, standing.streams->sampleRate());
    standing.standIn->setDuck(level.duck);
    standing.streams->render().setProcedure(standing.standIn->procedure());
    refillTimer_.setInterval(refillSeconds);
}

bool StandingTaps::isLinked(const StandingTap& standing) const
{
    const auto& name = standing.output.empty() ? devices_.defaultSinkName() : standing.output;
    const auto* sink = graph_.nodeNamed(name);
    return sink && standing.streams->isReady() &&
           !graph_.linksBetween(standing.streams->outputNode(), sink->id).empty();
}

std::unique_ptr<StandingTap> StandingTaps::take(const std::string& appID)
{
    const auto found = std::find_if(
        taps_.begin(), taps_.end(), [&](const auto& standing) { return standing->appID == appID; });
    if (appID.empty() || found == taps_.end()) {
        return nullptr;
    }
    auto standing = std::move(*found);
    taps_.erase(found);
    return standing;
}

void StandingTaps::add(std::unique_ptr<StandingTap> standing)
{
    taps_.push_back(std::move(standing));
}

void StandingTaps::followLevels()
{
    std::erase_if(taps_, [this](const auto& standing) {
        const auto level = levels_.of(standing->appID);
        if (level) {
            standing->standIn->setGain(level->gain);
            standing->standIn->setDuck(level->duck);
            const auto streams = router_.attachedTo(standing->id);
            send(*standing, outputFor(*level, streams.empty() ? SPA_ID_INVALID : *streams.begin()));
        } else if (!standing->appID.empty()) {
            retire(*standing);
        }
        return !level && !standing->appID.empty();
    });
    keepOneFree();
}

void StandingTaps::followStream(std::uint32_t stream)
{
    for (const auto& standing : taps_) {
        const auto level = levels_.of(standing->appID);
        if (level && router_.tapOf(stream) == standing->id) {
            send(*standing, outputFor(*level, stream));
        }
    }
}

void StandingTaps::followLinks()
{
    for (const auto& standing : taps_) {
        const bool mayRest = standing->appID.empty() && isLinked(*standing);
        if (mayRest && !std::exchange(standing->isAsleep, true)) {
            standing->streams->setAsleep(true);
        }
    }
}

void StandingTaps::streamRemoved()
{
    if (!taps_.empty() && !refillTimer_.isRunning()) {
        refillTimer_.setInterval(refillSeconds);
    }
}

void StandingTaps::keepOneFree()
{
    int free = 0;
    std::erase_if(taps_, [&](const auto& standing) {
        return isUnused(*standing) && (!standing->appID.empty() || !levels_.isAny() || ++free > 1);
    });
    const bool hasOutput = devices_.defaultOutput() != kAudioObjectUnknown;
    if (free == 0 && levels_.isAny() && hasOutput && graph_.hasMetadata() &&
        host_.isCapturePermitted()) {
        make();
    }
}

void StandingTaps::retireAll()
{
    refillTimer_.setInterval(0);
    for (const auto& standing : taps_) {
        retire(*standing);
    }
    taps_.clear();
}

void StandingTaps::retire(StandingTap& standing)
{
    standing.streams->render().setProcedure(nullptr);
    standing.streams->synchronise();
    host_.retire(standing.id, std::move(standing.streams));
}

bool StandingTaps::isUnused(const StandingTap& standing) const
{
    return !host_.isExpected(standing.appID) && router_.attachedTo(standing.id).empty();
}

StandingTap* StandingTaps::find(const std::string& appID) const
{
    const auto found = std::find_if(
        taps_.begin(), taps_.end(), [&](const auto& standing) { return standing->appID == appID; });
    return found != taps_.end() ? found->get() : nullptr;
}

StandingTap* StandingTaps::make()
{
    auto standing = std::make_unique<StandingTap>();
    standing->id = ids_.next();
    standing->streams = host_.makeStreams({});
    if (!standing->streams) {
        return nullptr;
    }
    taps_.push_back(std::move(standing));
    return taps_.back().get();
}

std::string StandingTaps::outputFor(const StartLevel& level, std::uint32_t stream) const
{
    if (level.outputDeviceUID && devices_.deviceForNodeName(*level.outputDeviceUID)) {
        return *level.outputDeviceUID;
    }
    const auto* node = graph_.node(stream);
    auto own = router_.ownTarget(stream);
    if (!own && node) {
        own = currentTarget(graph_, *node);
    }
    const auto* sink = own && !own->empty() ? targetNode(graph_, *own) : nullptr;
    return sink ? text(sink->props, PW_KEY_NODE_NAME) : std::string();
}

void StandingTaps::send(StandingTap& standing, const std::string& output)
{
    const auto node = standing.streams->outputNode();
    const auto value = output.empty() ? std::nullopt : std::optional(output);
    // What a session manager is told while it starts may be lost.
    const bool isLost = !output.empty() && graph_.metadataValue(node, targetObjectKey) != value;
    if ((standing.output == output && !isLost) || node == SPA_ID_INVALID) {
        return;
    }
    if (graph_.setMetadata(node, targetObjectKey, "", value) >= 0) {
        standing.output = output;
    }
}

} // namespace fadewell::pipewire
