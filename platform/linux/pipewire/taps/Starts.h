#pragma once

#include "audio/AudioTypes.h"
#include "platform/linux/pipewire/DeviceTable.h"
#include "platform/linux/pipewire/Graph.h"
#include "platform/linux/pipewire/LoopTimer.h"
#include "platform/linux/pipewire/taps/Lobby.h"
#include "platform/linux/pipewire/taps/TapRouter.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace fadewell::pipewire {

/// Leads new streams into their taps before a frame of them is heard elsewhere. Belongs to the
/// connection's lock.
///
/// A stream goes to its tap at the server's first word of it. One that can't yet, because its
/// client still waits for an answer or the tap isn't ready, waits in a lobby; after a quarter of a
/// second it is let go, since some players give up soon after.
class Starts final {
public:
    /// Where a stream belongs.
    struct Target {
        AudioObjectID tap = 0;
        std::string name;
        bool isReady = false;
    };
    /// Absent when the stream is to play as it comes.
    using FindTarget = std::function<std::optional<Target>(std::uint32_t node)>;

    Starts(Graph& graph,
           TapRouter& router,
           const DeviceTable& devices,
           AudioObjectID lobbyID,
           FindTarget findTarget);

    /// A client appeared that may begin to play and will have to wait for its answer then.
    void expectPulseStream();
    /// A Pulse client's stream ended; another one often follows, and the client says nothing first.
    void expectAnotherPulseStream();

    /// The server announced this stream.
    void begin(std::uint32_t node);

    /// Something that starts wait for may have happened.
    void advance();

    /// Whether the stream is still on its way.
    [[nodiscard]] bool isUnderWay(std::uint32_t node) const { return deadlines_.contains(node); }

    void forget(std::uint32_t node) { deadlines_.erase(node); }
    /// The server or its session manager has gone; drops the lobby with all starts.
    void clear();

private:
    void advance(std::uint32_t node);
    void wait(std::uint32_t node);
    bool openLobby(double seconds);
    [[nodiscard]] bool isLobbyOpen() const;
    void tick();
    [[nodiscard]] double now() const;

    Graph& graph_;
    TapRouter& router_;
    const DeviceTable& devices_;
    AudioObjectID lobbyID_;
    FindTarget findTarget_;
    std::map<std::uint32_t, double> deadlines_; ///< by node; uptimes in seconds
    std::unique_ptr<Lobby> lobby_;
    double lobbyUntil_ = 0;
    std::uint64_t lobbies_ = 0;
    LoopTimer timer_;
};

} // namespace fadewell::pipewire
