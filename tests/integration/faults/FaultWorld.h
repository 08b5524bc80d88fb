#pragma once

#include "tests/integration/faults/Ears.h"
#include "tests/integration/faults/PlayingApp.h"
#include "tests/integration/faults/SmallDisk.h"
#include "tests/integration/support/Fadewell.h"
#include "tests/integration/support/Session.h"

#include <chrono>
#include <set>
#include <string>
#include <vector>

namespace fadewell::integration {

/// A private session in which four apps play, with Fadewell and what it has to remember of them.
///
/// Its calls do something to the world and keep what is expected of it; settle() of SettledState.h
/// compares. They throw Unsettled when Fadewell does not answer or fails a command, and other
/// exceptions when something else of the rig fails.
class FaultWorld {
public:
    enum class Presence {
        running,
        ended, ///< by itself: it has cleaned up
        killed
    };

    /// With Fadewell running and some settings chosen, or without it for good.
    explicit FaultWorld(bool hasFadewell);
    ~FaultWorld();
    FaultWorld(const FaultWorld&) = delete;
    FaultWorld& operator=(const FaultWorld&) = delete;

    [[nodiscard]] std::vector<PlayingApp>& apps() { return apps_; }
    [[nodiscard]] const std::set<std::string>& outputs() const { return outputs_; }
    [[nodiscard]] Presence presence() const { return presence_; }
    [[nodiscard]] bool isMicrophoneMuted() const { return isMicrophoneMuted_; }
    [[nodiscard]] const SmallDisk& disk() const { return disk_; }
    [[nodiscard]] Ears& ears() { return ears_; }
    /// The process that was started has ended, or another one does its work by now: a crash.
    [[nodiscard]] bool hasCrashed();

    /// What has been done since the last clearStory(), for people.
    void note(const std::string& action) { story_ += story_.empty() ? action : ", " + action; }
    void clearStory() { story_.clear(); }
    [[nodiscard]] const std::string& story() const { return story_; }
    /// The last lines that Fadewell wrote, and where the server sends streams.
    [[nodiscard]] std::string traces() const;

    // Fadewell. `possible`: settings that it may come back with instead of the last ones.
    void startFadewell(const std::vector<RememberedSettings>& possible = {});
    void endFadewell(bool byCommand = false);
    /// Afterwards it is either gone or, restarted by its supervisor, running.
    void killFadewell(const std::vector<RememberedSettings>& possible = {});
    /// Likewise.
    void freezeFadewell(std::chrono::milliseconds time,
                        const std::vector<RememberedSettings>& possible);
    [[nodiscard]] std::vector<RememberedSettings> settings() const;
    /// Takes what Fadewell has come back with for the truth.
    void adoptSettings();

    // The user.
    void setVolume(PlayingApp& app, int percent);
    void setMuted(PlayingApp& app, bool isMuted);
    void setOutput(PlayingApp& app, const std::string& output);
    void forget(PlayingApp& app);
    void muteMicrophone(bool isMuted);

    // The sound system.
    void loseOutput(const std::string& output);
    void returnOutputs();
    /// Programs as Outage.h names them; they come back in this order.
    void restartPrograms(const std::vector<std::string>& names,
                         int signal,
                         std::chrono::milliseconds absence);
    void restartApp(PlayingApp& app);
    /// Players that their own program's end, and nobody else's fault, has ended or soon would.
    void freshenPlayers();
    /// How long everything may take to be right again now.
    [[nodiscard]] std::chrono::milliseconds patience() const;

private:
    void makeApps();
    void learnIDs();
    void command(std::vector<std::string> arguments);
    void awaitAnswer();
    /// What has become of a Fadewell that was killed: it has ended for good, or answers again.
    [[nodiscard]] bool awaitDecision(std::chrono::milliseconds time);
    void acceptSettings(const std::vector<RememberedSettings>& possible);
    [[nodiscard]] static RememberedSettings shownSettings(const PlayingApp& app);
    void countLoss();

    Session session_;
    SmallDisk disk_;
    Ears ears_;
    std::vector<PlayingApp> apps_;
    std::set<std::string> outputs_;
    std::optional<Fadewell> fadewell_;
    pid_t worker_ = 0; ///< of the process that does the work
    Presence presence_ = Presence::ended;
    bool isMicrophoneMuted_ = false;
    std::vector<std::chrono::steady_clock::time_point> losses_;
    std::string story_;
    std::string lastLog_;
};

} // namespace fadewell::integration
