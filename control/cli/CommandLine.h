#pragma once

#include "control/cli/Diagnostics.h"
#include "control/cli/Doctor.h"

#include <string>

namespace fadewell::cli {

/// Runs fadewellctl: parses, calls the running program, prints. Returns the exit status; needs a
/// QCoreApplication.
[[nodiscard]] int run(int argc,
                      const char* const* argv,
                      const std::string& version,
                      const Diagnose& diagnose,
                      const LocalDiagnostics& localDiagnostics);

} // namespace fadewell::cli
