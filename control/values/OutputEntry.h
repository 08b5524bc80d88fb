#pragma once

#include <string>

namespace fadewell {

/// One output device as the bus and the command line show it.
struct OutputEntry {
    std::string id{}; ///< the UID
    std::string name{};
    std::string kind{}; ///< the kind's raw value, such as "headphones"
    bool isDefault = false;

    bool operator==(const OutputEntry&) const = default;
};

} // namespace fadewell
