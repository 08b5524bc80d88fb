#pragma once

#include "app/MixerModel.h"
#include "audio/AudioHardware.h"
#include "base/UserDefaults.h"

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

    /// Removes what an earlier run left behind, then installs the signal handlers through
    /// `installSignalHandlers`, then starts the model.
    void applicationDidFinishLaunching(const std::function<void()>& installSignalHandlers);

    /// Stops every tap, then unmutes the microphones: at quit and on SIGTERM, SIGINT and SIGHUP.
    void applicationWillTerminate();

    [[nodiscard]] MixerModel& model() { return *model_; }

private:
    std::shared_ptr<MixerModel> model_;
    std::shared_ptr<AudioHardware> hardware_;
    std::shared_ptr<UserDefaults> defaults_;
};

} // namespace fadewell
