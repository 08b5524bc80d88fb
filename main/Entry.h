#pragma once

#include "main/Options.h"
#include "main/TerminationSignals.h"

#include <functional>
#include <memory>

namespace fadewell {

class Heartbeat;

/// One run below the supervisor; the heartbeat may be absent.
using Run = std::function<int(
    const Options& options, TerminationSignals& termination, std::shared_ptr<Heartbeat> heartbeat)>;

/// What every program of Fadewell does first: reads the command line, installs the log and, unless
/// told otherwise, has `run` supervised in a process of its own. Before Qt; returns the exit
/// status. `beforeRun` has a look at the options first, for the program without windows.
[[nodiscard]] int enter(int argc,
                        char** argv,
                        const Run& run,
                        const std::function<void(const Options&)>& beforeRun = {});

} // namespace fadewell
