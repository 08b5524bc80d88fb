#include "control/cli/CommandLine.h"
#include "platform/linux/doctor/Doctor.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return fadewell::cli::run(argc, argv, FADEWELL_VERSION, fadewell::diagnose);
}
