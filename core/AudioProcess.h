#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace fadewell {

/// One process object of the audio hardware layer and what it does now.
struct AudioProcess {
    std::uint32_t id = 0;                       ///< audio object ID of the process object
    std::int32_t pid = 0;                       ///< operating-system process identifier
    std::optional<std::string> bundleID;        ///< the process's own, when it has one
    bool isRunningOutput = false;               ///< producing sound now
    bool isRunningInput = false;                ///< capturing from a microphone now
    std::optional<std::int32_t> parentPID;      ///< immediate parent, when known
    std::optional<std::int32_t> responsiblePID; ///< the process the system holds responsible for it
    std::vector<std::uint32_t> outputDeviceIDs; ///< devices it plays to, in the order reported

    bool operator==(const AudioProcess&) const = default;
};

} // namespace fadewell
