#pragma once

#include "app/AppDirectory.h"
#include "app/AppRowState.h"
#include "app/RememberedApp.h"
#include "app/Workspace.h"
#include "audio/DeviceMonitor.h"
#include "audio/MicrophoneController.h"
#include "audio/ProcessMonitor.h"
#include "audio/TapManager.h"
#include "base/Logger.h"
#include "base/Observed.h"
#include "base/UserDefaults.h"
#include "core/AppSettingsStore.h"
#include "core/AudioApp.h"
#include "core/CallMode.h"
#include "core/CallModeSettings.h"
#include "core/Linger.h"
#include "core/OutputDevice.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
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
        std::shared_ptr<ProcessMonitor> monitor;
        std::shared_ptr<DeviceMonitor> devices;
        std::shared_ptr<TapManager> taps;
        std::shared_ptr<MicrophoneController> microphoneController;
        std::shared_ptr<AppSettingsStore> store;
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
    Observed<CallModeSettings> callModeSettings;
    Observed<std::vector<RememberedApp>> rememberedApps; ///< sorted by name

    /// Begins monitoring; does nothing without all four engine services, or a second time.
    void start();

    /// Clamped to 0 to 1 (what is no number becomes 1); clears the mute.
    void setVolume(double volume, const std::string& appID);
    void setMuted(bool muted, const std::string& appID);
    /// No UID follows the system's default output; the name is kept for when the device is absent.
    void setOutput(std::optional<std::string> uid,
                   std::optional<std::string> name,
                   const std::string& appID);
    void forget(const std::string& appID);
    void forgetAll();
    /// Moves the frontmost app's volume and announces it; a muted app starts from 0.
    void stepFrontmostApp(double delta);
    void toggleMicrophone();
    void setMicrophoneVolume(double volume);
    void toggleCallMode();
    /// Overrides detection until it next starts or ends a call.
    void setCallModeActive(bool on);
    /// Ends an override at once: call mode follows detection again.
    void followCallDetection();
    /// The override, while there is one.
    [[nodiscard]] std::optional<bool> callModeOverride() const;
    void setCallModeSettings(const CallModeSettings& settings);

    /// The name of a connected output device.
    [[nodiscard]] std::optional<std::string> outputDeviceName(std::string_view uid) const;

    /// What is remembered for an app, or the default settings.
    [[nodiscard]] AppAudioSettings settings(const std::string& appID) const;

    /// The grouped apps of the latest snapshot by identifier, shown or not.
    [[nodiscard]] const std::map<std::string, AudioApp>& currentApps() const { return current_; }

    [[nodiscard]] const std::shared_ptr<TapManager>& taps() const { return services_.taps; }
    [[nodiscard]] const std::shared_ptr<MicrophoneController>& microphoneController() const
    {
        return services_.microphoneController;
    }

private:
    explicit MixerModel(Services services);

    Services services_;
    std::map<std::string, AudioApp> current_;
    // The model's author fills this in.
};

} // namespace fadewell
