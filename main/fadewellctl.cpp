#include "control/cli/CommandLine.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return fadewell::cli::run(argc, argv, FADEWELL_VERSION);
}
