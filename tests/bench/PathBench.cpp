// What being tapped costs, side by side with the same sound untapped or through the sound server's
// own loopback: delay, lost sound, processor time, wake-ups, memory.

#include "tests/bench/PathBench.h"

#include "tests/integration/support/Session.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace fadewell::integration {
namespace {

int run(int argc, char** argv)
{
    std::vector<std::string> parts{"latency", "changes", "load", "rest"};
    std::string quantum = "1024";
    std::size_t count = 25;
    CLI::App app("What being tapped costs.", "path_bench");
    app.add_option("--part", parts, "latency, changes, load, rest")->check(CLI::IsMember(parts));
    app.add_option("--quantum", quantum, "frames in a cycle");
    app.add_option("--count", count, "changes of each kind");
    CLI11_PARSE(app, argc, argv);
    PathTable table;
    for (const auto& part : parts) {
        const Session session(
            {"--quantum", quantum, "--outputs", "Speakers,Headphones,Third,Fourth,Fifth,Sixth"});
        if (part == "latency") {
            measureLatency(table, session.folder());
        } else if (part == "changes") {
            measureChanges(table, session.folder(), count);
        } else if (part == "load") {
            measureLoad(table, session.folder());
        } else {
            measureRest(table, session.folder());
        }
    }
    fmt::print("{} failed\n", table.failed());
    return table.failed() == 0 ? 0 : 1;
}

} // namespace
} // namespace fadewell::integration

int main(int argc, char** argv)
try {
    return fadewell::integration::run(argc, argv);
} catch (const std::exception& error) {
    fmt::print(stderr, "path_bench: {}\n", error.what());
    return 1;
}
