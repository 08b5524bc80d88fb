#pragma once

#include "control/values/JsonOutput.h"

#include <string>

namespace fadewell::cli {

/// What a command prints: one or the other.
struct Output {
    OrderedJson json;
    std::string text; ///< ended by a line feed
};

} // namespace fadewell::cli
