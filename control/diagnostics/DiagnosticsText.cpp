#include "control/diagnostics/DiagnosticsText.h"

#include "control/diagnostics/NameMask.h"
#include "control/diagnostics/StoredSettingsText.h"
#include "control/values/PlainText.h"
#include "control/values/TextTable.h"

#include <algorithm>
#include <chrono>
#include <fmt/chrono.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

namespace fadewell {
namespace {

using Align = TextTable::Align;

std::string time(std::chrono::system_clock::time_point at)
{
    const auto seconds = std::chrono::floor<std::chrono::seconds>(at);
    return fmt::format("{:%Y-%m-%d %H:%M:%S}", fmt::gmtime(seconds));
}

std::string section(const std::string& title, const std::string& content)
{
    return fmt::format("\n== {} ==\n{}", title, content.empty() ? "none\n" : content);
}

std::string missing(const std::string& problem)
{
    return "Missing: " + plainText(problem) + '\n';
}

/// Several lines made plain one by one.
std::string plainLines(std::string_view text)
{
    std::string result;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        result += plainText(text.substr(0, end)) + '\n';
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return result;
}

/// In the order in which a reader meets them, so that "app 1" is the first.
void noteApps(NameMask& mask, const DiagnosticsFacts& facts)
{
    for (const auto& node : facts.nodes) {
        if (node.maker == SoundNode::Maker::program) {
            mask.note(node.appID.value_or(node.makerName.empty() ? node.name : node.makerName),
                      node.names);
        }
    }
    for (const auto& row : facts.rows) {
        mask.note(row.id, {row.name, row.bundleID.value_or("")});
    }
    for (const auto& app : facts.knownApps) {
        mask.note(app.id, {app.name});
    }
    noteApps(mask, facts.settings);
    for (const auto& entry : facts.log) {
        for (const auto& name : entry.message.names) {
            mask.note(name);
        }
    }
}

std::string head(bool withNames)
{
    const auto made =
        fmt::format("Fadewell diagnostics, made {} UTC.\n", time(std::chrono::system_clock::now()));
    const char* const names =
        withNames ? "It names your apps; \"fadewellctl diagnostics --without-names\", or the "
                    "switch in the\nwindow, leaves that out.\n"
                  : "Apps are called \"app 1\", \"app 2\" and so on, the same app by the same "
                    "number throughout.\n";
    return made +
           "Nothing of this was sent anywhere. Read it before you pass it on.\n"
           "It has no sound in it, and neither your name nor your computer's. Outputs and "
           "microphones are\ncalled what they call themselves.\n" +
           names;
}

std::string versions(const DiagnosticsFacts& facts, const NameMask& mask)
{
    std::string text;
    for (const auto& [what, version] : facts.versions) {
        text += fmt::format("{:<17} {}\n", what, plainText(mask.text(version)));
    }
    return text;
}

std::string findings(const DiagnosticsFacts& facts, const NameMask& mask)
{
    std::string text;
    for (const auto& finding : facts.findings) {
        const char* const verdict = finding.verdict == Finding::Verdict::good      ? "good"
                                    : finding.verdict == Finding::Verdict::limited ? "limited"
                                                                                   : "bad";
        text += fmt::format("{:<8} {}\n", verdict, plainText(mask.text(finding.text)));
    }
    return text;
}

std::string nodes(const DiagnosticsFacts& facts, NameMask& mask)
{
    if (!facts.nodesProblem.empty()) {
        return missing(mask.text(facts.nodesProblem));
    }
    TextTable table({{"ID", Align::right},
                     {"CLASS"},
                     {"NAME"},
                     {"STATE"},
                     {"MADE BY"},
                     {"TARGET"},
                     {"LINKED TO"}});
    for (const auto& node : facts.nodes) {
        const bool isApp = node.maker == SoundNode::Maker::program;
        const auto named = [&](const std::string& name) {
            return isApp && !name.empty() ? mask.app(name) : mask.text(name);
        };
        const auto made = node.makerName.empty() ? "-" : named(node.makerName);
        table.add({std::to_string(node.id),
                   mask.text(node.kind),
                   named(node.name),
                   node.state,
                   made,
                   node.target.empty() ? "default" : mask.text(node.target),
                   fmt::format("{}", fmt::join(node.neighbours, ", "))});
    }
    return facts.nodes.empty() ? "" : table.render();
}

std::string settingOf(const AppEntry& row)
{
    return fmt::format("{:.0f}%{}", row.volume * 100, row.isMuted ? ", muted" : "");
}

std::string activityOf(const AppEntry& row)
{
    std::vector<std::string> words;
    words.emplace_back(row.isPlaying ? "plays" : "silent");
    if (row.isUsingMicrophone) {
        words.emplace_back("microphone");
    }
    if (row.callStatus) {
        words.push_back(*row.callStatus);
    }
    if (!row.isTappable) {
        words.push_back("not controllable: " + row.untappableReason.value_or("unknown"));
    }
    return fmt::format("{}", fmt::join(words, ", "));
}

std::string rows(const DiagnosticsFacts& facts, NameMask& mask)
{
    if (!facts.rowsProblem.empty()) {
        return missing(facts.rowsProblem);
    }
    TextTable table({{"APP"}, {"IDENTIFIER"}, {"DOES"}, {"VOLUME"}, {"OUTPUT"}, {"PROCESSES"}});
    for (const auto& row : facts.rows) {
        const auto output = row.outputDeviceUID.value_or("");
        const bool leavesOut = mask.leavesOutApps();
        table.add({leavesOut ? mask.app(row.id) : mask.text(row.name),
                   leavesOut ? "left out" : mask.text(row.id),
                   activityOf(row),
                   settingOf(row),
                   output.empty() ? "system" : mask.text(output),
                   fmt::format("{}", fmt::join(row.pids, ", "))});
    }
    return facts.rows.empty() ? "" : table.render();
}

std::string_view word(LogLevel level)
{
    constexpr std::string_view words[] = {"debug", "info", "notice", "error"};
    return words[static_cast<std::size_t>(level)];
}

std::string log(const DiagnosticsFacts& facts, const NameMask& mask)
{
    if (!facts.logProblem.empty()) {
        return missing(facts.logProblem);
    }
    std::string text;
    for (const auto& [at, message] : facts.log) {
        text += fmt::format("{} {:<6} {}: {}\n",
                            time(at),
                            word(message.level),
                            message.category,
                            plainText(mask.text(message.text)));
    }
    return text;
}

} // namespace

std::string diagnosticsText(const DiagnosticsFacts& facts, bool withNames)
{
    NameMask mask(facts.owner, !withNames);
    noteApps(mask, facts);
    const auto place = plainText(mask.text(facts.settings.place));
    return head(withNames) + section("Versions", versions(facts, mask)) +
           section("What works", findings(facts, mask)) +
           section("Nodes of the sound session", nodes(facts, mask)) +
           section("Rows of the mixer", rows(facts, mask)) +
           section("Settings as stored in " + place,
                   plainLines(storedSettingsText(mask, facts.settings))) +
           section("Last lines of the log, oldest first, UTC", log(facts, mask));
}

} // namespace fadewell
