#pragma once

#include "control/cli/Output.h"

#include <functional>
#include <string>

namespace fadewell::cli {

/// What can be gathered without the program; `problem` says why it isn't asked.
using LocalDiagnostics = std::function<std::string(bool withNames, const std::string& problem)>;

/// Everything that helps to find a fault as one text: from the running program, else what there is.
[[nodiscard]] Output diagnostics(bool withNames, const LocalDiagnostics& local);

} // namespace fadewell::cli
