#include "platform/linux/pipewire/taps/Starts.h"

#include "base/Logger.h"
#include "base/SystemClock.h"
#include "platform/linux/pipewire/taps/TapNames.h"

#include <utility>
#include <vector>

namespace fadewell::pipewire {
namespace {

// The most impatient player gives up after 650 ms without a frame taken.
constexpr double waitSeconds = 0.250;
// From a client's first word to its stream.
constexpr double expectSeconds = 0.300;
// From one stream of a client to its next one.
constexpr double expectAnotherSeconds = 1.0;
// The session manager still takes the last stream out of the lobby.
constexpr double leaveSeconds = 0.020;
constexpr double tickSeconds = 0.010;

} // namespace

Starts::Starts(Graph& graph,
               TapRouter& router,
               const DeviceTable& devices,
               AudioObjectID lobbyID,
               FindTarget findTarget)
    : graph_(graph)
    , router_(router)
    , devices_(devices)
    , lobbyID_(lobbyID)
    , findTarget_(std::move(findTarget))
    , timer_(graph.connection(), [this] { tick(); })
{}

void Starts::expectPulseStream()
{
    openLobby(expectSeconds);
}

void Starts::expectAnotherPulseStream()
{
    openLobby(expectAnotherSeconds);
}

void Starts::begin(std::uint32_t node)
{
    if (findTarget_(node)) {
        deadlines_.try_emplace(node, now() + waitSeconds);
        timer_.setInterval(tickSeconds);
        advance(node);
    }
}

void Starts::advance()
{
    std::vector<std::uint32_t> nodes;
    for (const auto& [node, deadline] : deadlines_) {
        nodes.push_back(node);
    }
    for (const auto node : nodes) {
        advance(node);
    }
}

void Starts::clear()
{
    deadlines_.clear();
    lobby_ = nullptr;
    timer_.setInterval(0);
}

void Starts::advance(std::uint32_t node)
{
    const auto target = findTarget_(node);
    if (!target) {
        router_.release(node, lobbyID_);
        deadlines_.erase(node);
    } else if (target->isReady && router_.canMove(node)) {
        router_.attach(node, target->tap, target->name);
        deadlines_.erase(node);
        lobbyUntil_ = now() + leaveSeconds;
    } else {
        wait(node);
    }
}

void Starts::wait(std::uint32_t node)
{
    if (openLobby(leaveSeconds) && isLobbyOpen()) {
        router_.attach(node, lobbyID_, lobby_->name());
    }
}

bool Starts::openLobby(double seconds)
{
    lobbyUntil_ = std::max(lobbyUntil_, now() + seconds);
    if (!lobby_ && devices_.defaultOutput() != kAudioObjectUnknown) {
        lobby_ = Lobby::create(graph_.connection(), lobbyNodeName(router_.owner(), ++lobbies_));
        timer_.setInterval(tickSeconds);
    }
    return lobby_ != nullptr;
}

bool Starts::isLobbyOpen() const
{
    // The name of a node that doesn't exist yet would send the stream to the default output.
    return lobby_ && lobby_->node() != SPA_ID_INVALID && graph_.node(lobby_->node());
}

void Starts::tick()
{
    const double time = now();
    std::erase_if(deadlines_, [&](const auto& entry) {
        const bool isOver = time >= entry.second;
        if (isOver) {
            Logger("pipewire")
                .notice("A stream waited too long for its path; it plays as it comes");
            router_.release(entry.first, lobbyID_);
        }
        return isOver;
    });
    if (deadlines_.empty() && time >= lobbyUntil_) {
        clear();
    }
}

double Starts::now() const
{
    return SystemClock().uptime();
}

} // namespace fadewell::pipewire
