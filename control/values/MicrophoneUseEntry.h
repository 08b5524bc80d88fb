#pragma once

#include <cstdint>
#include <string>

namespace fadewell {

/// An app that uses the microphone, as the bus and the command line show it.
struct MicrophoneUseEntry {
    std::string id{};
    std::string name{};
    std::int64_t since = 0; ///< seconds since 1970, UTC

    bool operator==(const MicrophoneUseEntry&) const = default;
};

} // namespace fadewell
