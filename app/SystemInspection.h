#pragma once

#include "app/SoundNode.h"
#include "base/Finding.h"

#include <string>
#include <utility>
#include <vector>

namespace fadewell {

/// What a system tells of itself for somebody who looks for a fault. Nothing is changed by it.
class SystemInspection {
public:
    /// What would tell whose machine this is.
    struct Owner {
        std::string home; ///< folder
        std::string user;
        std::string fullName;
        std::string host;
    };
    /// The settings as they are on disk.
    struct StoredSettings {
        std::string place;
        std::string text;
        std::string problem{}; ///< why there is no text; empty otherwise
    };
    /// What is installed and in which version.
    using Versions = std::vector<std::pair<std::string, std::string>>;

    virtual ~SystemInspection() = default;

    // May take up to some seconds. [any thread]
    [[nodiscard]] virtual Versions versions() = 0;
    [[nodiscard]] virtual std::vector<Finding> findings() = 0;
    [[nodiscard]] virtual std::vector<SoundNode> nodes() = 0;
    /// Why there are no nodes; empty when they can be seen.
    [[nodiscard]] virtual std::string nodesProblem() = 0;
    [[nodiscard]] virtual StoredSettings settings() = 0;
    [[nodiscard]] virtual Owner owner() = 0;
};

} // namespace fadewell
