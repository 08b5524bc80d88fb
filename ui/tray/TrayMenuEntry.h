#pragma once

#include "ui/tray/TrayCommand.h"

#include <QString>

#include <optional>

namespace fadewell {

/// One line of the tray icon's menu.
struct TrayMenuEntry {
    int id = 0;                              ///< above 0; stays the entry's own in a run
    TrayCommand command = TrayCommand::none; ///< none: a separator
    QString text{};                          ///< localized
    bool isEnabled = true;
    std::optional<bool> isChecked = std::nullopt; ///< absent: no check mark

    bool operator==(const TrayMenuEntry&) const = default;
};

} // namespace fadewell
