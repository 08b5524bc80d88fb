#include "control/Diagnostics.h"

#include "control/diagnostics/DiagnosticsText.h"

#include <utility>

namespace fadewell {

Diagnostics::Diagnostics(Parts parts)
    : parts_(std::move(parts))
    , catalog_(parts_.model, parts_.workspace, parts_.tappability)
{}

std::string Diagnostics::text(bool withNames)
{
    parts_.defaults->flush(); // They are shown as they are on disk.
    auto facts = DiagnosticsFacts::of(*parts_.inspection, parts_.version + ", running");
    facts.rows = catalog_.shown();
    facts.knownApps = catalog_.known();
    for (const auto& app : parts_.model->callModeSettings.get().excludedApps) {
        facts.knownApps.push_back({app, catalog_.displayName(app)});
    }
    if (const auto log = RecentLog::installed()) {
        facts.log = log->entries();
    } else {
        facts.logProblem = "this program keeps no lines of its log";
    }
    return diagnosticsText(facts, withNames);
}

} // namespace fadewell
