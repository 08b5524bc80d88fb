#pragma once

#include <chrono>
#include <thread>

namespace fadewell::integration {

/// Looks again every few milliseconds until `isTrue`; false when `deadline` passed first.
template <class Condition>
[[nodiscard]] bool await(Condition isTrue,
                         std::chrono::milliseconds deadline = std::chrono::seconds(15))
{
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (!isTrue()) {
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

/// Waits up to 25 ms, another time each time: what is repeated must not meet the same moment of the
/// sound's cycles again and again.
inline void spreadOverCycle()
{
    static int count = 0;
    std::this_thread::sleep_for(std::chrono::milliseconds(++count * 7 % 25));
}

} // namespace fadewell::integration
