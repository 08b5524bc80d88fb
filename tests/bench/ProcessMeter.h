#pragma once

#include <chrono>
#include <sys/types.h>
#include <vector>

namespace fadewell::integration {

/// What processes use of the machine, all their threads together.
struct Usage {
    double cpu = 0;          ///< percent of a core
    double wakeups = 0;      ///< a second, of threads that aren't real-time ones
    double audioWakeups = 0; ///< a second, of the real-time threads, which play the sound
};

/// Watches groups of processes for a while, all at the same time; each group's sum.
[[nodiscard]] std::vector<Usage> measureUsage(const std::vector<std::vector<pid_t>>& groups,
                                              std::chrono::milliseconds time);

/// What processes have used of the processor since they began, in milliseconds.
[[nodiscard]] double processorTime(const std::vector<pid_t>& processes);

/// In megabytes.
[[nodiscard]] double residentMemory(pid_t process);
/// The same, with what processes share with others divided among them; all these together.
[[nodiscard]] double proportionalMemory(const std::vector<pid_t>& processes);

} // namespace fadewell::integration
