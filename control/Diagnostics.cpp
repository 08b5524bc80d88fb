#include "control/Diagnostics.h"

#include "control/diagnostics/DiagnosticsText.h"

#include <utility>

namespace fadewell {

std::shared_ptr<Diagnostics> Diagnostics::create(Parts parts)
{
    return std::shared_ptr<Diagnostics>(new Diagnostics(std::move(parts)));
}

Diagnostics::Diagnostics(Parts parts)
    : parts_(std::move(parts))
    , catalog_(parts_.model, parts_.workspace, parts_.tappability)
{}

void Diagnostics::gather(bool withNames, std::function<void(const std::string& text)> done)
{
    parts_.defaults->flush(); // They are shown as they are on disk.
    if (!queue_) {
        queue_ = parts_.makeQueue("app.fadewell.diagnostics");
    }
    queue_->async([weak = weak_from_this(),
                   mainQueue = parts_.mainQueue,
                   inspection = parts_.inspection,
                   version = parts_.version,
                   withNames,
                   done = std::move(done)] {
        auto facts = DiagnosticsFacts::of(*inspection, version + ", running");
        mainQueue->async([weak, withNames, done, facts = std::move(facts)] {
            if (const auto self = weak.lock()) {
                done(self->textOf(facts, withNames));
            }
        });
    });
}

std::string Diagnostics::textOf(DiagnosticsFacts facts, bool withNames)
{
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
