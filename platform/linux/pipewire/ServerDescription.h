#pragma once

#include <cstdint>
#include <string>

namespace fadewell {

/// What a sound server says of itself and of those around it.
struct ServerDescription {
    std::string version;        ///< the server's
    std::string libraryVersion; ///< of the library that this program uses
    std::string sessionManager; ///< name; empty when it doesn't say
    bool hasPulseServer = false;
    std::string rate;                   ///< in Hz
    std::string quantum;                ///< in frames
    std::int32_t sessionManagerPID = 0; ///< 0: unknown
};

} // namespace fadewell
