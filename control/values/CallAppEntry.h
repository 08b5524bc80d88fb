#pragma once

#include <string>

namespace fadewell {

/// An app whose microphone use counts as a call, unless it is excluded.
struct CallAppEntry {
    std::string id{};
    std::string name{};
    bool isExcluded = false;

    bool operator==(const CallAppEntry&) const = default;
};

} // namespace fadewell
