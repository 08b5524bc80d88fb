#pragma once

#include "tests/integration/support/Recorder.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace fadewell::integration {

/// When the level at an output began to change and when it had settled, in milliseconds after
/// something was done.
struct LevelChange {
    double begin = 0;
    double end = 0;

    /// Counts from the last whole cycle before `act` on: up to one cycle of what is measured passed
    /// before it. The right channel of what plays is constant. Absent when nothing changed or the
    /// recording has gaps.
    [[nodiscard]] static std::optional<LevelChange> measure(const Recorder& recorder,
                                                            const std::function<void()>& act);
};

/// Least, median and most; of at least one.
[[nodiscard]] std::string spread(std::vector<double> values);

/// The middle one, of at least one.
[[nodiscard]] double median(std::vector<double> values);

} // namespace fadewell::integration
