#pragma once

#include "app/AppDirectory.h"
#include "app/AppRowState.h"
#include "app/MicrophoneUser.h"
#include "app/RememberedApp.h"
#include "app/Workspace.h"
#include "audio/DeviceMonitor.h"
#include "audio/MicrophoneController.h"
#include "audio/ProcessMonitor.h"
#include "audio/StartGate.h"
#include "audio/TapManager.h"
#include "audio/TapRequest.h"
#include "base/Logger.h"
#include "base/Observed.h"
#include "base/ThreadSafety.h"
#include "base/Timer.h"
#include "base/UserDefaults.h"
#include "core/AppSettingsStore.h"
#include "core/AudioApp.h"
#include "core/CallMode.h"
#include "core/CallModeSettings.h"
#include "core/Linger.h"
#include "core/OutputDevice.h"
#include "core/RecentlyStarted.h"

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fadewell {

/// Joins the engine's streams, the remembered settings and call mode into rows and tap requests,
/// and carries out what the user asks for.
///
/// Everything here runs on the main queue; commands take effect before they return, the sound
/// follows.
class MixerModel final : public std::enable_shared_from_this<MixerModel> {
public:
    /// What the model stands on. A missing service skips the steps that need it.
    struct Services {
        std::shared_ptr<SerialQueue> mainQueue; ///< required
        std::shared_ptr<Workspace> workspace;   ///< required
        std::shared_ptr<UserDefaults> defaults; ///< required
        std::shared_ptr<ProcessMonitor> monitor{};
        std::shared_ptr<DeviceMonitor> devices{};
        std::shared_ptr<TapManager> taps{};
        std::shared_ptr<MicrophoneController> microphoneController{};
        std::shared_ptr<AppSettingsStore> store{};
        std::shared_ptr<StartGate> startGate{}; ///< absent where none is needed
    };

    /// Loads the remembered settings; observes and starts nothing.
    [[nodiscard]] static std::shared_ptr<MixerModel> create(Services services);
    ~MixerModel();
    MixerModel(const MixerModel&) = delete;
    MixerModel& operator=(const MixerModel&) = delete;

    // Observed by the interface; written by the model only.
    Observed<std::vector<AppRowState>> apps; ///< sorted by name
    Observed<std::vector<OutputDevice>> outputDevices;
    Observed<std::optional<std::string>> defaultOutputUID;
    Observed<bool> needsAudioPermission;
    Observed<bool> isCallModeActive;
    Observed<bool> isCallDetected;
    Observed<std::vector<std::string>> callAppNames;
    Observed<MicrophoneState> microphone;
    Observed<std::vector<std::string>> microphoneUserNames;
    Observed<std::vector<MicrophoneUser>> microphoneUsers; ///< in the order of their names
    Observed<CallModeSettings> callModeSettings;
    Observed<std::vector<RememberedApp>> rememberedApps; ///< sorted by name

    /// Begins monitoring; does nothing without all four engine services, or a second time.
    void start();

    /// Lets go of every app; the end of the program.
    void stop();

    /// Clamped to 0 to 1 (what is no number becomes 1); clears the mute.
    void setVolume(double volume, const std::string& appID);
    void setMuted(bool muted, const std::string& appID);
    /// No UID follows the system's default output; the name is kept for when the device is absent.
    void setOutput(std::optional<std::string> uid,
                   std::optional<std::string> name,
                   const std::string& appID);
    void forget(const std::string& appID);
    void forgetAll();
    /// Moves the frontmost app's volume and announces it; a muted app starts from 0. The app's
    /// identifier, or absent when there is none to move.
    std::optional<std::string> stepFrontmostApp(double delta);
    void toggleMicrophone();
    void setMicrophoneVolume(double volume);
    void toggleCallMode();
    /// Overrides detection until it next starts or ends a call.
    void setCallModeActive(bool on);
    /// Ends an override at once: call mode follows detection again.
    void followCallDetection();
    /// The override, while there is one.
    [[nodiscard]] std::optional<bool> callModeOverride() const
    {
        services_.mainQueue->assertCurrent();
        return callMode_.manualOverride;
    }
    void setCallModeSettings(const CallModeSettings& settings);

    /// The name of a connected output device.
    [[nodiscard]] std::optional<std::string> outputDeviceName(std::string_view uid) const;

    /// What is remembered for an app, or the default settings.
    [[nodiscard]] AppAudioSettings settings(const std::string& appID) const;

    /// The grouped apps of the latest snapshot by identifier, shown or not.
    [[nodiscard]] const std::map<std::string, AudioApp>& currentApps() const
    {
        services_.mainQueue->assertCurrent();
        return current_;
    }

    [[nodiscard]] const std::shared_ptr<TapManager>& taps() const { return services_.taps; }
    [[nodiscard]] const std::shared_ptr<MicrophoneController>& microphoneController() const
    {
        return services_.microphoneController;
    }

private:
    explicit MixerModel(Services services);

    /// A handler that does nothing once the model is gone.
    template <class... Values>
    [[nodiscard]] std::function<void(Values...)> weakly(void (MixerModel::*handle)(Values...))
    {
        return [weak = weak_from_this(), handle](Values... values) {
            if (const auto self = weak.lock()) {
                self->services_.mainQueue->assertCurrent();
                (self.get()->*handle)(std::move(values)...);
            }
        };
    }

    [[nodiscard]] double now() const { return services_.mainQueue->clock().uptime(); }
    /// Seconds from now until a deadline has surely passed.
    [[nodiscard]] double delayUntil(double deadline) const
    {
        return std::max(deadline - now(), 0.0) + 0.05;
    }

    // What the engine and the desktop tell.
    void handleMicrophone(MicrophoneState state);
    void handleProcesses(std::vector<AudioProcess> processes) ON_QUEUE(*services_.mainQueue);
    void handleDevices(DeviceSnapshot snapshot) ON_QUEUE(*services_.mainQueue);
    void handleTapEvent(TapEvent event);
    void handleLaunch();

    // Rows and tap requests.
    void rebuildRows() ON_QUEUE(*services_.mainQueue);
    void publishMicrophoneUsers() ON_QUEUE(*services_.mainQueue);
    [[nodiscard]] std::optional<AppRowState> makeRow(const std::string& appID,
                                                     const std::set<std::string>& exempt)
        ON_QUEUE(*services_.mainQueue);
    [[nodiscard]] std::optional<CallStatus> callStatus(const AudioApp& app,
                                                       const std::set<std::string>& exempt) const
        ON_QUEUE(*services_.mainQueue);
    void scheduleExpiry(const std::set<std::string>& playing) ON_QUEUE(*services_.mainQueue);
    [[nodiscard]] std::vector<TapRequest> tapRequests(double level,
                                                      const std::set<std::string>& exempt) const
        ON_QUEUE(*services_.mainQueue);
    void pushTapRequests() ON_QUEUE(*services_.mainQueue);
    [[nodiscard]] std::vector<RememberedApp> rememberedAppsFromStore()
        ON_QUEUE(*services_.mainQueue);
    void refreshRememberedApps() ON_QUEUE(*services_.mainQueue);
    void updateStartGate() ON_QUEUE(*services_.mainQueue);
    void updateLoweredStarts() ON_QUEUE(*services_.mainQueue);

    /// The current apps that have this flag.
    [[nodiscard]] std::set<std::string> currentAppIDs(bool AudioApp::*flag) const
        ON_QUEUE(*services_.mainQueue);
    /// The apps that call mode never lowers.
    [[nodiscard]] std::set<std::string> duckExemptIDs() const ON_QUEUE(*services_.mainQueue);

    // Commands and call mode.
    /// An app and what it is called.
    struct NamedApp {
        std::string id;
        std::string name;
    };
    [[nodiscard]] std::optional<NamedApp> frontmostApp() ON_QUEUE(*services_.mainQueue);
    void writeThrough(const AppAudioSettings& changed, const std::string& appID)
        ON_QUEUE(*services_.mainQueue);
    void showInRow(const AppAudioSettings& changed, const std::string& appID)
        ON_QUEUE(*services_.mainQueue);
    [[nodiscard]] static CallMode::Configuration configuration(const CallModeSettings& settings);
    void refreshCallDetection() ON_QUEUE(*services_.mainQueue);
    void applyCallMode() ON_QUEUE(*services_.mainQueue);
    void reevaluateCallMode() ON_QUEUE(*services_.mainQueue);

    const Services services_;
    const Logger log_{"mixer"};
    CallMode callMode_ CONFINED_TO(*services_.mainQueue);
    RecentlyStarted recentlyStarted_ CONFINED_TO(*services_.mainQueue);
    AppDirectory directory_ CONFINED_TO(*services_.mainQueue);
    Linger<std::string> linger_ CONFINED_TO(*services_.mainQueue){3.0}; ///< of rows, by app
    /// Confined like the rest; unmarked because a getter hands out a reference to it.
    std::map<std::string, AudioApp> current_;
    /// The last row built for each app that is still shown.
    std::map<std::string, AppRowState> lastKnown_ CONFINED_TO(*services_.mainQueue);
    /// The working copy, which also holds what is never saved.
    std::map<std::string, AppAudioSettings> settings_ CONFINED_TO(*services_.mainQueue);
    /// As the start gate was told last.
    std::optional<LoweredStarts> loweredStarts_ CONFINED_TO(*services_.mainQueue);
    Timer callModeTimer_ CONFINED_TO(*services_.mainQueue);
    Timer expiryTimer_ CONFINED_TO(*services_.mainQueue);
    std::vector<Subscription> tasks_ CONFINED_TO(*services_.mainQueue); ///< empty until started
    Subscription launchObserver_ CONFINED_TO(*services_.mainQueue);
};

} // namespace fadewell
