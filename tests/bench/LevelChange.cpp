#include "tests/bench/LevelChange.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

namespace fadewell::integration {

std::optional<LevelChange> LevelChange::measure(const Recorder& recorder,
                                                const std::function<void()>& act)
{
    using namespace std::chrono_literals;
    const auto before = recorder.now();
    act();
    const auto sound = recorder.read(before, frames(300ms));
    const auto differs = [](float left, float right) {
        return std::abs(left - right) > 1e-6F;
    };
    const auto& level = sound.right;
    const auto first = std::find_if(
        level.begin(), level.end(), [&](float each) { return differs(each, level.front()); });
    const auto last = std::find_if(
        level.rbegin(), level.rend(), [&](float each) { return differs(each, level.back()); });
    if (!sound.isComplete || first == level.end() || level.back() == 0) {
        return std::nullopt;
    }
    const auto milliseconds = [](auto distance) {
        return static_cast<double>(distance) * 1000 / sampleRate;
    };
    return LevelChange{milliseconds(first - level.begin()), milliseconds(level.rend() - last)};
}

std::string spread(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return fmt::format(
        "{:6.1f} {:6.1f} {:6.1f}", values.front(), values[values.size() / 2], values.back());
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace fadewell::integration
