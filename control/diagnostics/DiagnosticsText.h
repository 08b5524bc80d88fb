#pragma once

#include "control/diagnostics/DiagnosticsFacts.h"

#include <string>

namespace fadewell {

/// The facts as one plain text that a person can read before passing it on. What would tell whose
/// machine it is has gone; `withNames` keeps the names of apps. Pure, but for the time of day in
/// it.
[[nodiscard]] std::string diagnosticsText(const DiagnosticsFacts& facts, bool withNames);

} // namespace fadewell
