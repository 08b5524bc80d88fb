#pragma once

#include "app/AppShortcuts.h"
#include "app/AppWindows.h"
#include "app/MixerModel.h"
#include "audio/AudioHardware.h"
#include "base/UserDefaults.h"
#include "shortcuts/KeyboardShortcuts.h"

#include <functional>
#include <memory>

namespace fadewell {

/// Starts the program in the right order and leaves the sound system clean when it ends. [main
/// queue]
class AppDelegate final {
public:
    AppDelegate(std::shared_ptr<MixerModel> model,
                std::shared_ptr<AudioHardware> hardware,
                std::shared_ptr<UserDefaults> defaults);

    /// The windows to open from here on; without a display there are none.
    void setWindows(std::shared_ptr<AppWindows> windows);

    /// Removes what an earlier run left behind, then installs the signal handlers through
    /// `installSignalHandlers`, then starts the model and registers the shortcuts; greets someone
    /// who is new here.
    void applicationDidFinishLaunching(const std::function<void()>& installSignalHandlers);

    /// The program was started once more: opens the settings, or the panel where there are none.
    void applicationShouldHandleReopen();

    /// Stops every tap, then unmutes the microphones: at quit and on SIGTERM, SIGINT and SIGHUP.
    void applicationWillTerminate();

    [[nodiscard]] MixerModel& model() { return *model_; }

    /// Before the launch, which gives them their actions; without them there are none. `translate`
    /// may be empty.
    void setShortcuts(std::shared_ptr<shortcuts::KeyboardShortcuts> shortcuts,
                      AppShortcuts::Translate translate = {});

private:
    std::shared_ptr<MixerModel> model_;
    std::shared_ptr<AudioHardware> hardware_;
    std::shared_ptr<UserDefaults> defaults_;
    std::shared_ptr<AppWindows> windows_;                     ///< may be absent
    std::shared_ptr<shortcuts::KeyboardShortcuts> shortcuts_; ///< may be absent
    AppShortcuts::Translate translate_;
};

} // namespace fadewell
