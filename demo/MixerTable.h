#pragma once

#include "demo/LevelMeter.h"

#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace fadewell::demo {

/// What each output plays; empty while it is silent.
using Levels = std::map<std::string, std::optional<LevelMeter::Level>>;

/// One line an app and one an output, from a state as "fadewellctl watch --json" prints it. Members
/// that are missing show as empty.
[[nodiscard]] std::string mixerTable(const nlohmann::json& state, const Levels& levels);

} // namespace fadewell::demo
