#include "control/cli/CommandLine.h"
#include "control/diagnostics/DiagnosticsText.h"
#include "platform/linux/doctor/Doctor.h"
#include "platform/linux/doctor/LinuxInspection.h"

#include <QCoreApplication>

namespace {

/// What there is to tell where the program itself can't be asked.
std::string localDiagnostics(bool withNames, const std::string& problem)
{
    const auto inspection = fadewell::LinuxInspection::connect();
    auto facts = fadewell::DiagnosticsFacts::of(*inspection,
                                                FADEWELL_VERSION " (of fadewellctl): " + problem);
    facts.rowsProblem = "the running program has them. " + problem;
    facts.logProblem = "the running program has its last lines. Where there is a journal, so does: "
                       "journalctl --user -t fadewell -n 500";
    return fadewell::diagnosticsText(facts, withNames);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return fadewell::cli::run(argc, argv, FADEWELL_VERSION, fadewell::diagnose, localDiagnostics);
}
