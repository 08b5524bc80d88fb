#pragma once

#include "platform/linux/pipewire/GraphObjects.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace fadewell::pipewire {

/// Pids of processes whose own can't be known begin here; no kernel hands them out.
inline constexpr std::int32_t firstMadeUpPID = 0x40000001;

/// Finds out which process a stream belongs to. Belongs to the connection's lock.
class ProcessPIDs final {
public:
    /// The pid of the stream's process; absent while the client's own description is still to come
    /// or when nobody tells.
    [[nodiscard]] std::optional<std::int32_t> resolve(const Properties& node,
                                                      const GraphClient* client);

private:
    [[nodiscard]] std::int32_t madeUp(const std::string& sandboxed);

    std::map<std::string, std::int32_t> madeUp_; ///< one for each sandboxed process
};

} // namespace fadewell::pipewire
