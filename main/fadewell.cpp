#include "main/Options.h"
#include "main/Platform.h"
#include "main/Program.h"
#include "main/TerminationSignals.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    using namespace fadewell;
    int exitStatus = 0;
    const auto options = Options::parse(argc, argv, exitStatus);
    if (!options) {
        return exitStatus;
    }
    TerminationSignals termination; // Before Qt and the engine start their threads.
    LogSink::install(makeLogSink(options->isVerbose));
    const QCoreApplication application(argc, argv);
    Program program(*options, termination);
    return program.run();
}
