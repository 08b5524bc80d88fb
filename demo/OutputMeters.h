#pragma once

#include "demo/LevelMeter.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace fadewell::demo {

/// One output and what it played during the last interval.
struct OutputLevel {
    std::string name{};                       ///< as shown
    std::optional<LevelMeter::Level> level{}; ///< absent: it didn't run
    bool operator==(const OutputLevel&) const = default;
};

/// A meter on every output there is, following those that come and go. [the loop's thread]
class OutputMeters {
public:
    explicit OutputMeters(pw_core* core);
    ~OutputMeters();
    OutputMeters(const OutputMeters&) = delete;
    OutputMeters& operator=(const OutputMeters&) = delete;

    /// In the order in which the outputs appeared; since the last call.
    std::vector<OutputLevel> take();

private:
    struct Output {
        std::string name;
        std::unique_ptr<LevelMeter> meter;
    };

    static void onGlobal(void* data,
                         std::uint32_t id,
                         std::uint32_t permissions,
                         const char* type,
                         std::uint32_t version,
                         const spa_dict* properties);
    static void onGlobalRemove(void* data, std::uint32_t id);

    pw_core* core_;
    pw_registry* registry_ = nullptr;
    spa_hook listener_{};
    std::map<std::uint32_t, Output> outputs_;
};

} // namespace fadewell::demo
