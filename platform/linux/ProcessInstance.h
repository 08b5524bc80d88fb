#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace fadewell {

/// One run of a program. The kernel uses process ids again; together with the time at which the
/// process began they name one run for as long as the machine is up.
struct ProcessInstance {
    std::int32_t pid = 0;
    std::uint64_t start = 0; ///< in the kernel's ticks since boot; 0 when it can't be told

    bool operator==(const ProcessInstance&) const = default;

    /// The calling process. [any thread]
    [[nodiscard]] static ProcessInstance own();

    /// Whoever has this pid now; absent when nobody has.
    [[nodiscard]] static std::optional<ProcessInstance> running(std::int32_t pid);

    [[nodiscard]] bool isRunning() const { return running(pid) == *this; }

    /// "PID-START", fit for a file's or a node's name, and back.
    [[nodiscard]] std::string text() const;
    [[nodiscard]] static std::optional<ProcessInstance> parse(std::string_view text);
};

} // namespace fadewell
