#include "tests/bench/ProcessMeter.h"

#include <filesystem>
#include <fstream>
#include <sched.h>
#include <string>
#include <thread>

namespace fadewell::integration {
namespace {

/// The number behind a key of a status file; 0 without it.
double valueIn(const std::filesystem::path& file, const std::string& key)
{
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with(key + ":")) {
            return std::stod(line.substr(key.size() + 1));
        }
    }
    return 0;
}

/// Since the processes began: seconds instead of percent, numbers instead of rates.
Usage totalOf(const std::vector<pid_t>& processes)
{
    Usage total;
    for (const auto process : processes) {
        const auto tasks = std::filesystem::path("/proc") / std::to_string(process) / "task";
        // A thread may end meanwhile.
        std::error_code error;
        for (std::filesystem::directory_iterator task(tasks, error), end; !error && task != end;
             task.increment(error))
        {
            double nanoseconds = 0;
            std::ifstream(task->path() / "schedstat") >> nanoseconds;
            total.cpu += nanoseconds * 1e-9;
            const auto policy = sched_getscheduler(std::stoi(task->path().filename()));
            const bool isAudio = (policy & ~SCHED_RESET_ON_FORK) != SCHED_OTHER;
            (isAudio ? total.audioWakeups : total.wakeups) +=
                valueIn(task->path() / "status", "voluntary_ctxt_switches");
        }
    }
    return total;
}

} // namespace

std::vector<Usage> measureUsage(const std::vector<std::vector<pid_t>>& groups,
                                std::chrono::milliseconds time)
{
    std::vector<Usage> usages;
    for (const auto& group : groups) {
        usages.push_back(totalOf(group));
    }
    const auto begin = std::chrono::steady_clock::now();
    std::this_thread::sleep_for(time);
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const auto after = totalOf(groups[i]);
        usages[i] = {100 * (after.cpu - usages[i].cpu) / seconds,
                     (after.wakeups - usages[i].wakeups) / seconds,
                     (after.audioWakeups - usages[i].audioWakeups) / seconds};
    }
    return usages;
}

double processorTime(const std::vector<pid_t>& processes)
{
    return totalOf(processes).cpu * 1000;
}

double residentMemory(pid_t process)
{
    return valueIn("/proc/" + std::to_string(process) + "/status", "VmRSS") / 1024;
}

double proportionalMemory(const std::vector<pid_t>& processes)
{
    double total = 0;
    for (const auto process : processes) {
        total += valueIn("/proc/" + std::to_string(process) + "/smaps_rollup", "Pss") / 1024;
    }
    return total;
}

} // namespace fadewell::integration
