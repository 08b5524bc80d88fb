#pragma once

#include "app/AppDelegate.h"
#include "app/AudioAccess.h"
#include "app/LoginItem.h"
#include "app/MixerModel.h"
#include "base/Clock.h"
#include "base/LastOwner.h"
#include "base/SerialQueue.h"
#include "main/Platform.h"
#include "shortcuts/KeyboardShortcuts.h"

#include <functional>
#include <memory>

namespace fadewell {

/// The engine and the model wired together on a platform. [main queue]
class Composition final {
public:
    Composition(Platform platform,
                std::shared_ptr<SerialQueue> mainQueue,
                std::shared_ptr<Clock> clock,
                QueueFactory makeQueue);

    [[nodiscard]] const std::shared_ptr<MixerModel>& model() const { return model_; }
    /// Absent where the platform has no login items.
    [[nodiscard]] const std::shared_ptr<LoginItem>& loginItem() const { return loginItem_; }
    [[nodiscard]] const std::shared_ptr<AudioAccess>& audioAccess() const { return audioAccess_; }
    [[nodiscard]] const Platform& platform() const { return platform_; }
    [[nodiscard]] const std::shared_ptr<shortcuts::KeyboardShortcuts>& shortcuts() const
    {
        return shortcuts_;
    }

    /// Before `launch`; without a display there are none.
    void setWindows(std::shared_ptr<AppWindows> windows);

    /// The program was started once more.
    void reopen();

    /// Cleans up after an earlier run and begins; only for the one running instance.
    void launch(const std::function<void()>& installSignalHandlers);

    /// Leaves the sound system clean; a second call does nothing, nor one before `launch`.
    void terminate();

private:
    LastOwner hardwareOwner_; ///< first, as it waits for all the others
    Platform platform_;
    std::shared_ptr<MixerModel> model_;
    std::shared_ptr<LoginItem> loginItem_; ///< may be absent
    std::shared_ptr<AudioAccess> audioAccess_;
    std::shared_ptr<shortcuts::KeyboardShortcuts> shortcuts_;
    AppDelegate delegate_;
    bool isRunning_ = false;
};

} // namespace fadewell
