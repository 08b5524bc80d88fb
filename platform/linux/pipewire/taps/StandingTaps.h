#pragma once

#include "audio/AudioTypes.h"
#include "platform/linux/pipewire/DeviceTable.h"
#include "platform/linux/pipewire/Graph.h"
#include "platform/linux/pipewire/LoopTimer.h"
#include "platform/linux/pipewire/ObjectIDs.h"
#include "platform/linux/pipewire/taps/StandingTap.h"
#include "platform/linux/pipewire/taps/StartLevels.h"
#include "platform/linux/pipewire/taps/TapRouter.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace fadewell::pipewire {

/// The standing taps: one of each app that plays, or is about to, without a path of the engine's
/// own, and a free one as long as an app may need it. Belongs to the connection's lock.
class StandingTaps final {
public:
    struct Host {
        /// Null when there can't be any now.
        std::function<std::unique_ptr<TapStreams>(const std::string& output)> makeStreams;
        /// Takes streams that no procedure uses any more.
        std::function<void(AudioObjectID tap, std::unique_ptr<TapStreams> streams)> retire;
        /// Whether a stream of the app was announced that is in no tap yet.
        std::function<bool(const std::string& appID)> isExpected;
        std::function<bool()> isCapturePermitted;
    };

    StandingTaps(Graph& graph,
                 ObjectIDs& ids,
                 const DeviceTable& devices,
                 TapRouter& router,
                 const StartLevels& levels,
                 Host host);

    /// The app's tap, sent to where `stream` is to be heard (SPA_ID_INVALID: not known yet). Null
    /// when none can be made.
    StandingTap* forApp(const StartLevel& level, std::uint32_t stream);

    /// Whether what enters the tap is heard.
    [[nodiscard]] bool isLinked(const StandingTap& standing) const;

    /// Takes the app's tap out, for the engine's own path; null when it has none.
    [[nodiscard]] std::unique_ptr<StandingTap> take(const std::string& appID);
    /// Has streams carry an app on whose path of the engine's has ended.
    void add(std::unique_ptr<StandingTap> standing);

    [[nodiscard]] const std::vector<std::unique_ptr<StandingTap>>& all() const { return taps_; }

    /// The levels have changed, or the outputs that there are.
    void followLevels();
    /// It became known where a stream would play by itself, often after it was sent to its tap.
    void followStream(std::uint32_t stream);
    /// Links were made: free taps that are ready fall asleep.
    void followLinks();
    /// A stream has gone: what it leaves unused goes in a moment.
    void streamRemoved();

    /// Drops those that nobody uses, and makes one that is free if there is to be one.
    void keepOneFree();

    /// At the end of the program: their apps move out of them.
    void retireAll();
    /// Drops them at once: the server has gone.
    void clear() { taps_.clear(); }

private:
    [[nodiscard]] std::string outputFor(const StartLevel& level, std::uint32_t stream) const;
    void send(StandingTap& standing, const std::string& output);
    void assign(StandingTap& standing, const StartLevel& level);
    void retire(StandingTap& standing);
    [[nodiscard]] bool isUnused(const StandingTap& standing) const;
    [[nodiscard]] StandingTap* find(const std::string& appID) const;
    StandingTap* make();

    Graph& graph_;
    ObjectIDs& ids_;
    const DeviceTable& devices_;
    TapRouter& router_;
    const StartLevels& levels_;
    Host host_;
    std::vector<std::unique_ptr<StandingTap>> taps_;
    LoopTimer refillTimer_;
};

} // namespace fadewell::pipewire
