#pragma once

#include "audio/EngineContext.h"
#include "audio/HALListener.h"
#include "audio/InputMutes.h"
#include "audio/MicrophoneState.h"
#include "base/Logger.h"
#include "base/Stream.h"
#include "base/UserDefaults.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace fadewell {

/// Follows the default input device, shows its state, and mutes it for all apps.
///
/// While it shows the device as muted, it is: somebody else's change is undone at once, and one who
/// insists gets his way, which is shown. What it muted stands in the user defaults under
/// "mutedInputDevices" (device UID to -1 for a mute switch, else to the volume it had), so that it
/// can be undone after a crash.
class MicrophoneController final : public std::enable_shared_from_this<MicrophoneController> {
public:
    static constexpr const char* mutedInputDevicesKey = "mutedInputDevices";

    [[nodiscard]] static std::shared_ptr<MicrophoneController>
    create(EngineContext context, std::shared_ptr<UserDefaults> defaults);
    ~MicrophoneController();
    MicrophoneController(const MicrophoneController&) = delete;
    MicrophoneController& operator=(const MicrophoneController&) = delete;

    /// A state equal to the last one is not published; only the newest is kept.
    [[nodiscard]] Stream<MicrophoneState>& states();

    /// Begins following the default input device. Asynchronous.
    void start();

    /// Mutes or unmutes the followed device; a mute follows the default input. Asynchronous.
    void setMuted(bool muted);

    /// Sets the input volume, clamped to 0 to 1; ends a mute. Asynchronous.
    void setVolume(double volume);

    /// Undoes every mute of this program before it returns; publishes nothing.
    void releaseMute();

    /// Undoes the mutes that an earlier run left behind. [any thread]
    static void restoreLeftMuted(AudioHardware& hardware, UserDefaults& defaults);

private:
    MicrophoneController(EngineContext context, std::shared_ptr<UserDefaults> defaults);
    void startOnQueue() ON_QUEUE(*queue_);
    void attachDefaultInput() ON_QUEUE(*queue_);
    void listenToDevice() ON_QUEUE(*queue_);
    void publishState() ON_QUEUE(*queue_);
    [[nodiscard]] MicrophoneState makeState() const ON_QUEUE(*queue_);
    void muteDevice() ON_QUEUE(*queue_);
    void handleDeviceChange() ON_QUEUE(*queue_);
    void keepMuted() ON_QUEUE(*queue_);

    const EngineContext context_;
    const std::shared_ptr<UserDefaults> defaults_;
    InputMutes mutes_ CONFINED_TO(*queue_);
    const std::shared_ptr<SerialQueue> queue_;
    const Logger log_{"microphone"};
    Stream<MicrophoneState> states_{1};

    bool wantsMute_ CONFINED_TO(*queue_) = false;
    /// The default input device that is followed; 0 for none.
    AudioObjectID device_ CONFINED_TO(*queue_) = kAudioObjectUnknown;
    std::unique_ptr<HALListener> systemListener_ CONFINED_TO(*queue_);
    HALListeners deviceListeners_ CONFINED_TO(*queue_);
    /// When others turned the muted microphone on; uptimes in seconds.
    std::vector<double> undone_ CONFINED_TO(*queue_);
    std::optional<MicrophoneState> last_ CONFINED_TO(*queue_);
};

} // namespace fadewell
