// Random faults, each of which can be repeated by its seed and number.

#include "tests/integration/faults/FaultWorld.h"
#include "tests/integration/faults/Faults.h"
#include "tests/integration/faults/SmallDisk.h"
#include "tests/integration/faults/Unsettled.h"

#include <CLI/CLI.hpp>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <fmt/format.h>
#include <map>
#include <memory>

namespace fadewell::integration {
namespace {

volatile std::sig_atomic_t isInterrupted = 0;

struct Options {
    std::uint64_t seed = 1;
    std::uint64_t first = 0;
    std::uint64_t count = 1000;
    std::string only{}; ///< one kind of fault, by name
    /// False: what is done to Fadewell itself is left out, and the apps have to be heard as they
    /// play. Shows what the rig and the sound system do by themselves.
    bool hasFadewell = true;
};

constexpr int attempts = 3; // at a fault with which the rig itself fails
constexpr std::array verdicts{"settled", "FAILED", "RIG FAILED"};
enum Verdict : std::size_t {
    settled,
    failed,
    rigFailed, ///< nothing is known about Fadewell
    repeated   ///< the rig failed, and the fault was done once more
};

/// Does one fault, in a fresh world after one that failed; `text` says what was done, and after a
/// failure what was seen and logged.
Verdict attempt(const Options& options,
                std::uint64_t number,
                std::unique_ptr<FaultWorld>& world,
                std::string& text)
{
    const auto tell = [&](Verdict verdict, const std::string& what) {
        text = (world ? world->story() : "starting") + "\n  " + what;
        text += world ? "\n" + world->traces() : "";
        world.reset();
        return verdict;
    };
    try {
        if (!world) {
            world = std::make_unique<FaultWorld>(options.hasFadewell);
        }
        doFault(*world, options.seed, number, options.only);
        text = world->story();
        return settled;
    } catch (const Unsettled& error) {
        return tell(failed, error.what());
    } catch (const std::exception& error) {
        return tell(rigFailed, error.what());
    }
}

int run(const Options& options)
{
    using Clock = std::chrono::steady_clock;
    std::map<std::string, std::array<int, repeated + 1>> counts;
    std::unique_ptr<FaultWorld> world;
    int bad = 0;
    for (auto number = options.first; number < options.first + options.count; ++number) {
        const auto start = Clock::now();
        const auto name = options.only.empty() ? faultName(options.seed, number) : options.only;
        std::string text;
        auto verdict = rigFailed;
        for (int i = 0; i < attempts && verdict == rigFailed && isInterrupted == 0; ++i) {
            verdict = attempt(options, number, world, text);
            if (verdict == rigFailed && i + 1 < attempts) {
                ++counts[name][repeated];
                fmt::print("{} {}: once more, the rig failed: {}\n", number, name, text);
            }
        }
        if (isInterrupted != 0) { // what it did to this fault is no one's failure
            fmt::print("Interrupted; go on with --seed {} --from {}.\n", options.seed, number);
            return 1;
        }
        ++counts[name].at(verdict);
        bad += verdict == settled ? 0 : 1;
        fmt::print("{} {} (seed {}): {} after {:.1f} s: {}\n",
                   number,
                   name,
                   options.seed,
                   verdicts.at(verdict),
                   std::chrono::duration<double>(Clock::now() - start).count(),
                   text);
        std::fflush(stdout);
    }
    constexpr auto row = "{:12} {:>8} {:>8} {:>12} {:>10}\n";
    fmt::print(row, "fault", "settled", "failed", "rig failed", "repeated");
    for (const auto& [name, kinds] : counts) {
        fmt::print(row, name, kinds[settled], kinds[failed], kinds[rigFailed], kinds[repeated]);
    }
    return bad == 0 ? 0 : 1;
}

} // namespace
} // namespace fadewell::integration

int main(int argc, char** argv)
{
    using namespace fadewell::integration;
    Options options;
    CLI::App app("Does random faults to Fadewell and its sound system, in sessions of their own.");
    app.add_option("--seed", options.seed, "Chooses the faults")->capture_default_str();
    app.add_option("--count", options.count, "How many")->capture_default_str();
    app.add_option("--from", options.first, "The number of the first one")->capture_default_str();
    app.add_option("--only", options.only, "One kind of fault")->check(CLI::IsMember(faultNames()));
    app.add_flag("!--without-fadewell", options.hasFadewell, "Try the rig itself");
    CLI11_PARSE(app, argc, argv);
    std::signal(SIGINT, [](int) { isInterrupted = 1; });
    std::signal(SIGTERM, [](int) { isInterrupted = 1; });
    if (!SmallDisk::allow()) {
        fmt::print("No disks can be mounted here: full and read-only disks are left out.\n");
    }
    return run(options);
}
