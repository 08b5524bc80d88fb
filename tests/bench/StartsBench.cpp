// How apps with a remembered volume begin to play, counted by content: frames at a wrong volume,
// frames lost, starts that hang. Beside the same without Fadewell, because players lose some sound
// by themselves.

#include "tests/integration/support/Fadewell.h"
#include "tests/integration/support/Session.h"
#include "tests/integration/support/StartTally.h"
#include "tests/integration/support/Starts.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <fmt/format.h>
#include <map>

namespace fadewell::integration {
namespace {

using Texts = std::vector<std::string>;

const std::map<std::string, StartKind> kinds{{"start", StartKind::start},
                                             {"restart", StartKind::restart},
                                             {"resume", StartKind::resume},
                                             {"row", StartKind::row}};

struct Options {
    Texts kinds{"start", "restart", "resume", "row"};
    Texts clients{"pw-play", "paplay", "mpv", "ffplay", "client-native", "client-pulse"};
    Texts quanta{"256", "1024"};
    Texts loads{"idle", "busy"};
    std::size_t count = 100;
    std::size_t untouched = 0; ///< of these; 0: as many
    int rest = 0;              ///< in milliseconds
};

struct Cell {
    std::string kind;
    std::string program;
    std::string load;

    /// Both cores are kept busy, if they are to be.
    [[nodiscard]] StartTally measure(Starts& starts, double gain, std::size_t count) const
    {
        std::vector<ChildProcess> burners;
        for (int i = 0; i < (load == "busy" ? 2 : 0); ++i) {
            burners.emplace_back(Texts{"sh", "-c", "while :; do :; done"});
        }
        return starts.measure(integration::kinds.at(kind), program, gain, count);
    }
};

std::vector<Cell> cellsOf(const Options& options)
{
    std::vector<Cell> cells;
    for (const auto& kind : options.kinds) {
        for (const auto& program : programsOf(kinds.at(kind))) {
            for (const auto& load : options.loads) {
                if (std::count(options.clients.begin(), options.clients.end(), program) > 0) {
                    cells.push_back({kind, program, load});
                }
            }
        }
    }
    return cells;
}

void print(const Cell& cell,
           const std::string& quantum,
           const char* side,
           const StartTally& tally,
           const std::string& verdict)
{
    const auto name = fmt::format("{} {} {} {}", cell.kind, cell.program, cell.load, quantum);
    fmt::print("{:<32} {:<9} {} {}\n", name, side, tally.line(), verdict);
    std::fflush(stdout);
}

/// What seems worse with Fadewell than without it.
struct Suspect {
    Cell cell;
    StartTally touched;
    StartTally untouched;
};

/// All cells at one quantum; `log` is Fadewell's.
std::vector<Suspect> compare(const Options& options, const std::string& quantum, std::string& log)
{
    const Session session({"--quantum", quantum});
    Starts starts(session.folder(), std::chrono::milliseconds(options.rest));
    const auto cells = cellsOf(options);
    std::vector<StartTally> untouched;
    for (const auto& cell : cells) {
        const auto count = options.untouched > 0 ? options.untouched : options.count;
        untouched.push_back(cell.measure(starts, 1, count));
        print(cell, quantum, "untouched", untouched.back(), "");
    }
    Fadewell fadewell;
    for (const auto& cell : cells) {
        starts.remember(cell.program, 10);
    }
    std::vector<Suspect> suspects;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const auto tally = cells[i].measure(starts, 0.1, options.count);
        const auto faults = tally.faultsBeside(untouched[i]);
        const bool isJudged = cells[i].load == "idle" || quantum != "256";
        if (isJudged && !faults.empty()) {
            suspects.push_back({cells[i], tally, untouched[i]});
        }
        const auto* verdict = faults.empty() ? "ok" : isJudged ? "suspect: " : "not judged: ";
        print(cells[i], quantum, "fadewell", tally, verdict + faults);
    }
    if (fadewell.end(SIGTERM) != 0) {
        throw std::runtime_error("Fadewell did not end well: " + fadewell.log());
    }
    log = fadewell.log();
    return suspects;
}

/// Whether it stays worse beside more starts without Fadewell. What a player loses by itself
/// differs from session to session: mpv's first cycle in none or in one of six starts.
bool isGuilty(const Options& options, const std::string& quantum, Suspect& suspect)
{
    constexpr int sessions = 3;
    auto faults = suspect.touched.faultsBeside(suspect.untouched);
    for (int i = 0; i < sessions && !faults.empty(); ++i) {
        const Session session({"--quantum", quantum});
        Starts starts(session.folder(), std::chrono::milliseconds(options.rest));
        suspect.untouched.add(suspect.cell.measure(starts, 1, options.count));
        faults = suspect.touched.faultsBeside(suspect.untouched);
    }
    const auto verdict = faults.empty() ? "ok" : "FAILED: " + faults;
    print(suspect.cell, quantum, "untouched", suspect.untouched, verdict);
    return !faults.empty();
}

/// The number of failed cells.
int judge(const Options& options, const std::string& quantum)
{
    std::string log;
    auto suspects = compare(options, quantum, log);
    const auto failed = std::count_if(suspects.begin(), suspects.end(), [&](Suspect& suspect) {
        return isGuilty(options, quantum, suspect);
    });
    if (failed > 0) {
        fmt::print("{}\n", log);
    }
    return static_cast<int>(failed);
}

int run(int argc, char** argv)
{
    Options options;
    CLI::App app("How apps with a remembered volume begin to play.", "starts_bench");
    const auto choose = [&](const char* name, Texts& chosen, const char* help) {
        app.add_option(name, chosen, help)->check(CLI::IsMember(chosen));
    };
    choose("--kind", options.kinds, "start, restart, resume, row");
    choose("--client", options.clients, "the program that plays");
    choose("--load", options.loads, "idle, busy (both cores)");
    app.add_option("--quantum", options.quanta, "frames in a cycle");
    app.add_option("--count", options.count, "starts of each");
    app.add_option("--untouched", options.untouched, "starts without Fadewell, if fewer");
    app.add_option("--rest", options.rest, "milliseconds before each start of a process");
    CLI11_PARSE(app, argc, argv);
    fmt::print("{:<42} {}\n", "", StartTally::heading());
    int failed = 0;
    for (const auto& quantum : options.quanta) {
        failed += judge(options, quantum);
    }
    fmt::print("{} failed\n", failed);
    return failed == 0 ? 0 : 1;
}

} // namespace
} // namespace fadewell::integration

int main(int argc, char** argv)
try {
    return fadewell::integration::run(argc, argv);
} catch (const std::exception& error) {
    fmt::print(stderr, "starts_bench: {}\n", error.what());
    return 1;
}
