#include "base/SystemClock.h"

#include <chrono>
#include <ctime>
#include <thread>

namespace fadewell {

double SystemClock::uptime() const
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

void SystemClock::sleep(double seconds)
{
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

} // namespace fadewell
