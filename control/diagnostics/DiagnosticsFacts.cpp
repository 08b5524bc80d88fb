#include "control/diagnostics/DiagnosticsFacts.h"

#include "control/values/SessionFindings.h"

#include <QtGlobal>

namespace fadewell {

DiagnosticsFacts DiagnosticsFacts::of(SystemInspection& inspection, const std::string& version)
{
    DiagnosticsFacts facts;
    facts.versions = {{"Fadewell", version}, {"Qt", qVersion()}};
    const auto versions = inspection.versions();
    facts.versions.insert(facts.versions.end(), versions.begin(), versions.end());
    facts.findings = sessionFindings(QDBusConnection::sessionBus());
    const auto findings = inspection.findings();
    facts.findings.insert(facts.findings.end(), findings.begin(), findings.end());
    facts.nodes = inspection.nodes();
    facts.nodesProblem = inspection.nodesProblem();
    facts.settings = inspection.settings();
    facts.owner = inspection.owner();
    return facts;
}

} // namespace fadewell
