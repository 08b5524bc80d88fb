#pragma once

#include <functional>
#include <string>

namespace fadewell {

/// Gathers everything that helps to find a fault into one text, and calls `done` with it on the
/// main queue: after up to some seconds where a part of the system hangs, never once the program
/// ends. [main queue]
using GatherDiagnostics =
    std::function<void(bool withNames, std::function<void(const std::string& text)> done)>;

} // namespace fadewell
