#pragma once

#include "tests/bench/PathTable.h"

#include <filesystem>

namespace fadewell::integration {

/// The parts of the benchmark, each in the session of the environment with Fadewell not running,
/// and left so. `folder` is the session's.

/// The delay that a tap adds.
void measureLatency(PathTable& table, const std::filesystem::path& folder);
/// What is lost while apps get a tap, lose it, and change their output; `count` times each.
void measureChanges(PathTable& table, const std::filesystem::path& folder, std::size_t count);
/// What taps cost, and whether many of them are still in time.
void measureLoad(PathTable& table, const std::filesystem::path& folder);
/// What Fadewell uses while it has nothing, or little, to do.
void measureRest(PathTable& table, const std::filesystem::path& folder);

} // namespace fadewell::integration
