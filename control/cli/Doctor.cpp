#include "control/cli/Doctor.h"

#include "control/values/BusNames.h"
#include "control/values/JsonOutput.h"
#include "control/values/PlainText.h"
#include "control/values/SessionFindings.h"

#include <QDBusConnection>
#include <QVariant>

#include <fmt/format.h>
#include <string_view>

namespace fadewell::cli {
namespace {

using enum Finding::Verdict;

Finding programFinding(const QDBusConnection& bus, const std::string& version)
{
    const auto running = readBusProperty(bus, bus::service, bus::path, bus::interface, "Version");
    if (!running) {
        return {"fadewell",
                limited,
                fmt::format("Fadewell {}, not running. Start it with: fadewell", version)};
    }
    const auto text = running->toString().toStdString();
    return text == version
               ? Finding{"fadewell", good, fmt::format("Fadewell {}, running.", version)}
               : Finding{"fadewell",
                         limited,
                         fmt::format("Fadewell {} runs, but {} is installed: quit and start it.",
                                     text,
                                     version)};
}

std::string_view word(Finding::Verdict verdict)
{
    return verdict == good ? "good" : verdict == limited ? "limited" : "bad";
}

} // namespace

Output doctor(const std::string& version, const Diagnose& diagnose)
{
    std::vector<Finding> findings;
    const auto bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        findings.push_back(programFinding(bus, version));
    }
    const auto session = sessionFindings(bus);
    findings.insert(findings.end(), session.begin(), session.end());
    if (diagnose) {
        const auto more = diagnose();
        findings.insert(findings.end(), more.begin(), more.end());
    }
    Output output{OrderedJson::array(), ""};
    for (const auto& finding : findings) {
        output.json.push_back(
            {{"id", finding.id}, {"verdict", word(finding.verdict)}, {"text", finding.text}});
        output.text += fmt::format("{:<8} {}\n", word(finding.verdict), plainText(finding.text));
    }
    return output;
}

} // namespace fadewell::cli
