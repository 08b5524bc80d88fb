#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace fadewell {

/// One app as the mixer shows it: its processes joined.
struct AudioApp {
    std::string id;                      ///< bundle identifier, or "pid:" and the owner's pid
    std::optional<std::string> bundleID; ///< the owner's
    std::vector<std::int32_t> pids;      ///< owning applications, ascending, each once
    std::vector<std::uint32_t> processObjectIDs; ///< all grouped processes, ascending
    bool isPlaying = false;                      ///< any process is running output
    bool isUsingMicrophone = false;              ///< any process is running input
    std::vector<std::uint32_t> outputDeviceIDs;  ///< each once, in first-seen order

    bool operator==(const AudioApp&) const = default;
};

} // namespace fadewell
