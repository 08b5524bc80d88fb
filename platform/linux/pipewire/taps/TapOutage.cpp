// What becomes of the taps' streams when the session manager or the server goes and comes back.

#include "platform/linux/pipewire/taps/Taps.h"

#include <algorithm>
#include <utility>

namespace fadewell::pipewire {
namespace {

// The session manager links within some milliseconds once it is awake, which takes it longer.
constexpr double relinkSeconds = 0.150;
constexpr int leastTicks = 20;
constexpr int mostTicks = 400;
constexpr int mostRelinks = 10;

} // namespace

/// Whether there is an output to play on: the wanted one, or the one that the session manager sends
/// everything to meanwhile.
bool Taps::canPlay(const std::string& output) const
{
    return graph_.hasMetadata() && (graph_.nodeNamed(output) != nullptr ||
                                    graph_.nodeNamed(devices_.defaultSinkName()) != nullptr);
}

void Taps::dropStreams()
{
    starts_.clear();
    announced_.clear();
    standing_.clear();
    leftovers_.clear();
    for (auto& [id, tap] : taps_) {
        tap.streams = nullptr;
        tap.untouched.clear();
    }
    retired_.clear();
    router_.forgetAll();
    relinkTimer_.setInterval(0);
    updateTimers();
}

void Taps::restoreStreams()
{
    bool isAnyBack = false;
    for (auto& [id, tap] : taps_) {
        const auto isUsed = [this, tapID = id] {
            return std::any_of(aggregates_.begin(), aggregates_.end(), [=](const auto& entry) {
                return entry.second.tap == tapID;
            });
        };
        if (tap.streams || !isUsed() || !canPlay(tap.output) || !makeStreams(tap, tap.output)) {
            continue;
        }
        isAnyBack = true;
        if (const auto active = procedures_.find(tap.activeProcedure); active != procedures_.end())
        {
            tap.streams->render().setProcedure(&active->second->procedure);
        }
    }
    if (isAnyBack) {
        routeAll();
        lookForAstray();
    }
}

/// Takes the streams that live on but that no tap of the engine carries.
void Taps::retakeStreams()
{
    standing_.keepOneFree();
    for (const auto& [id, node] : graph_.nodes()) {
        if (announced_.contains(id) || !processes_.isTappable(id) || !router_.canMove(id)) {
            continue;
        }
        const auto owner = ownerOf(node);
        const auto level = owner && !tapFor(*owner) ? levels_.of(owner->appID) : std::nullopt;
        const auto* standing = level ? standing_.forApp(*level, id) : nullptr;
        if (standing) {
            announced_.emplace(id, *owner);
            router_.attach(id, standing->id, standing->streams->name());
        }
    }
    lookForAstray();
}

void Taps::lookForAstray()
{
    relinks_ = relinkTicks_ = 0;
    astray_.clear();
    relinkTimer_.setInterval(relinkSeconds);
}

/// A session manager that was restarted waits for ever over the first link of a stream that lived
/// on, for ports that are there already; the next link works. So the stream goes to another tap.
void Taps::relink()
{
    bool isSettled = ++relinkTicks_ >= leastTicks;
    const auto before = std::exchange(astray_, {});
    const auto isDue = [&](AudioObjectID id, const TapStreams* streams) {
        if (!streams || !isAnyAstray(id, streams->captureNode())) {
            return false;
        }
        isSettled = false;
        astray_.insert(id);
        // One that is heard elsewhere may be on its way.
        if (!before.contains(id) && !isAnyAstray(id, SPA_ID_INVALID)) {
            return false;
        }
        // Until it links at all it is still starting, or there is no output.
        const bool isAwake = streams->isReady() &&
                             !graph_.linksBetween(streams->outputNode(), SPA_ID_INVALID).empty();
        return isAwake && relinks_++ < mostRelinks;
    };
    for (auto& [id, tap] : taps_) {
        if (isDue(id, tap.streams.get())) {
            auto old = std::exchange(tap.streams, nullptr);
            makeStreams(tap, tap.output);
            replace(id, tap.streams, std::move(old));
        }
    }
    for (const auto& standing : standing_.all()) {
        if (isDue(standing->id, standing->streams.get())) {
            auto old = std::exchange(standing->streams, newStandingStreams(standing->output));
            replace(standing->id, standing->streams, std::move(old));
        }
    }
    removeSecondLinks();
    if (isSettled || relinkTicks_ >= mostTicks) {
        relinkTimer_.setInterval(0);
        standing_.keepOneFree();
    }
}

/// A session manager that was restarted now and then links a stream to an output and to its tap,
/// and forgets the first link: the app would be heard twice. What others have linked is theirs.
void Taps::removeSecondLinks()
{
    const auto before = std::exchange(secondLinks_, {});
    const auto look = [&](AudioObjectID id, const TapStreams& streams) {
        for (const auto node : router_.attachedTo(id)) {
            if (graph_.linksBetween(node, streams.captureNode()).empty()) {
                continue;
            }
            for (const auto* link : graph_.linksBetween(node, SPA_ID_INVALID)) {
                if (link->inputNode != streams.captureNode() && graph_.isSessionManagers(*link)) {
                    secondLinks_.insert(link->id);
                }
            }
        }
    };
    for (const auto& [id, tap] : taps_) {
        if (tap.streams) {
            look(id, *tap.streams);
        }
    }
    for (const auto& standing : standing_.all()) {
        if (standing->streams) {
            look(standing->id, *standing->streams);
        }
    }
    for (const auto link : secondLinks_) {
        if (before.contains(link)) { // Else it may be about to go.
            Logger("pipewire").info("A stream was linked to an output and to its tap");
            graph_.destroy(link);
        }
    }
}

/// Has `fresh` go on with what is in `old`, which stays when there are none.
void Taps::replace(AudioObjectID id,
                   std::unique_ptr<TapStreams>& fresh,
                   std::unique_ptr<TapStreams> old)
{
    if (!fresh) {
        fresh = std::move(old);
        return;
    }
    fresh->render().setProcedure(old->render().procedure());
    old->render().setProcedure(nullptr);
    for (const auto node : router_.attachedTo(id)) {
        router_.attach(node, id, fresh->name());
    }
    retired_.addReplaced(std::move(old), now());
    updateTimers();
}

void Taps::forEachStreams(const std::function<void(TapStreams&)>& call)
{
    for (const auto& [id, tap] : taps_) {
        if (tap.streams) {
            call(*tap.streams);
        }
    }
    for (const auto& standing : standing_.all()) {
        if (standing->streams) {
            call(*standing->streams);
        }
    }
}

/// Whether a stream that was sent to the tap is not linked to `capture`; SPA_ID_INVALID: to
/// nothing.
bool Taps::isAnyAstray(AudioObjectID tap, std::uint32_t capture) const
{
    const auto nodes = router_.attachedTo(tap);
    return std::any_of(nodes.begin(), nodes.end(), [=, this](std::uint32_t node) {
        return graph_.linksBetween(node, capture).empty();
    });
}

} // namespace fadewell::pipewire
