#include "main/Entry.h"

#include "base/RecentLog.h"
#include "main/Platform.h"

namespace fadewell {

int enter(int argc,
          char** argv,
          const Run& run,
          const std::function<void(const Options&)>& beforeRun)
{
    int exitStatus = 0;
    const auto options = Options::parse(argc, argv, exitStatus);
    if (!options) {
        return exitStatus;
    }
    if (beforeRun) {
        beforeRun(*options);
    }
    // A program that is started again after a crash knows what the one before it was told.
    LogSink::install(std::make_shared<RecentLog>(makeLogSink(options->isVerbose)));
    const auto supervised = [&](const std::shared_ptr<Heartbeat>& heartbeat) {
        TerminationSignals termination; // Before Qt and the engine start their threads.
        return run(*options, termination, heartbeat);
    };
    return options->isUnsupervised ? supervised(nullptr) : runSupervised(supervised);
}

} // namespace fadewell
