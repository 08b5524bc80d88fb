#pragma once

#include <string>

namespace fadewell {

/// Something that a person can address by its identifier or by its name: an app, an output.
struct NamedItem {
    std::string id;
    std::string name;

    bool operator==(const NamedItem&) const = default;
};

} // namespace fadewell
