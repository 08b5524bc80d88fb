#pragma once

#include "app/AppWindows.h"
#include "app/MixerModel.h"
#include "ui/tray/TrayCommand.h"

#include <QRect>

#include <functional>
#include <memory>
#include <optional>

namespace fadewell {

/// What the tray icon does, whichever way it is shown. [main queue]
class TrayActions final {
public:
    struct Parts {
        std::shared_ptr<MixerModel> model;
        AppWindows& windows;
        /// Opens the panel from the icon's place, as far as that is known, or closes it.
        std::function<void(const std::optional<QRect>& icon)> togglePanel;
        std::function<void()> quit;
    };

    explicit TrayActions(Parts parts);

    /// A click.
    void activate(const std::optional<QRect>& icon);
    /// A click with the middle button: toggles the microphone.
    void activateSecondary();
    /// The wheel: changes the frontmost app's volume by a tenth each step, upwards above 0.
    void step(int steps);
    /// An entry of the menu.
    void run(TrayCommand command);

private:
    Parts parts_;
};

} // namespace fadewell
