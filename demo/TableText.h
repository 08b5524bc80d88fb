#pragma once

#include "demo/AppsFeed.h"
#include "demo/OutputMeters.h"

#include <string>
#include <vector>

namespace fadewell::demo {

/// The table's lines, without line ends or control characters.
std::vector<std::string> tableLines(const std::optional<std::vector<AppRow>>& apps,
                                    const std::vector<OutputLevel>& outputs);

} // namespace fadewell::demo
