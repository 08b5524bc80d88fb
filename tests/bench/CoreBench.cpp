#include "core/AppGrouper.h"
#include "core/TapPlanner.h"

#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <string>
#include <vector>

namespace fadewell {
namespace {

/// As on a desktop full of browsers: four processes to an application, owned in different ways.
struct Desktop {
    explicit Desktop(int processCount)
    {
        for (int i = 0; i < processCount; ++i) {
            const int app = i / 4;
            const int pid = 1000 + i;
            AudioProcess process{.id = static_cast<std::uint32_t>(10 + i),
                                 .pid = pid,
                                 .bundleID = std::nullopt,
                                 .isRunningOutput = i % 2 == 0,
                                 .isRunningInput = false,
                                 .parentPID = std::nullopt,
                                 .responsiblePID = std::nullopt,
                                 .outputDeviceIDs = {2}};
            switch (i % 4) {
            case 0:
                apps.push_back({.pid = pid, .bundleID = bundleID(app)});
                process.bundleID = bundleID(app);
                break;
            case 1:
                process.bundleID = bundleID(app) + ".helper";
                break;
            case 2:
                process.parentPID = pid - 2;
                break;
            default:
                process.responsiblePID = pid - 3;
                break;
            }
            processes.push_back(std::move(process));
        }
    }

    static std::string bundleID(int app) { return fmt::format("org.example.app{}", app); }

    std::vector<AudioProcess> processes;
    std::vector<RunningApp> apps;
};

void group(benchmark::State& run)
{
    const Desktop desktop(static_cast<int>(run.range(0)));
    for (auto _ : run) {
        benchmark::DoNotOptimize(
            AppGrouper::group(desktop.processes, desktop.apps, AppGrouper::ignoredBundleIDs(), {}));
    }
    run.SetComplexityN(run.range(0));
}

/// Sessions for half of the wanted apps, and each gain another one: a call began.
void plan(benchmark::State& run)
{
    std::vector<TapTarget> targets;
    TapPlanner::Sessions sessions;
    for (int i = 0; i < run.range(0); ++i) {
        const auto id = Desktop::bundleID(i);
        const std::vector processes{static_cast<std::uint32_t>(10 + i)};
        targets.push_back({.appID = id,
                           .processObjectIDs = processes,
                           .gain = 0.5,
                           .duck = 0.25,
                           .isPlaying = true,
                           .outputDeviceUID = "speakers"});
        if (i % 2 == 0) {
            sessions[id] = {.processObjectIDs = processes,
                            .outputDeviceUID = "speakers",
                            .gain = 0.5,
                            .isRunning = true,
                            .unitySince = std::nullopt};
        }
    }
    for (auto _ : run) {
        benchmark::DoNotOptimize(TapPlanner::plan(targets, sessions, {}, 1000));
    }
    run.SetComplexityN(run.range(0));
}

BENCHMARK(group)->Name("core/group")->Arg(10)->Arg(100)->Arg(1000)->Complexity();
BENCHMARK(plan)->Name("core/plan")->Arg(10)->Arg(100)->Arg(1000)->Complexity();

} // namespace
} // namespace fadewell
