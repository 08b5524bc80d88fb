#pragma once

#include "app/MixerModel.h"

#include <QString>

namespace fadewell {

/// What the icon in the tray shows of the model at one moment. [main queue]
struct MenuBarIcon {
    /// A muted microphone outranks call mode.
    explicit MenuBarIcon(const MixerModel& model);

    QString symbol; ///< the name of a bundled symbol
    QString label;  ///< localized; the tooltip, and what a screen reader says

    bool operator==(const MenuBarIcon&) const = default;
};

} // namespace fadewell
