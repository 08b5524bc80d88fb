#pragma once

#include <cstdint>
#include <optional>

namespace fadewell {

/// What the operating system knows of a process's relations. [any thread]
class ProcessLookup {
public:
    virtual ~ProcessLookup() = default;

    /// The immediate parent as the system reports it; absent when it can't be told.
    [[nodiscard]] virtual std::optional<std::int32_t> parent(std::int32_t pid) = 0;

    /// Whether this system can tell responsible processes at all.
    [[nodiscard]] virtual bool knowsResponsibleProcesses() const = 0;

    /// The process that the system holds responsible for this one (possibly itself); below 1 when
    /// unknown.
    [[nodiscard]] virtual std::int32_t responsible(std::int32_t pid) = 0;
};

} // namespace fadewell
