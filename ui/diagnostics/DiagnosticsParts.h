#pragma once

#include "app/GatherDiagnostics.h"

#include <QString>

#include <functional>
#include <optional>
#include <string>

namespace fadewell {

/// What the diagnostics window stands on.
struct DiagnosticsParts {
    GatherDiagnostics gather;
    std::function<void(const QString& text)> copy; ///< to the clipboard
    /// Asks where to save; answers the file's path later, or never when the user thinks better.
    std::function<void(std::function<void(const QString& path)> chosen)> chooseFile;
};

} // namespace fadewell
