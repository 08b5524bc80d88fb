#pragma once

namespace fadewell {

/// Where time comes from. [any thread]
class Clock {
public:
    virtual ~Clock() = default;

    /// Seconds since boot while the machine was awake; never goes back.
    [[nodiscard]] virtual double uptime() const = 0;

    /// Blocks the calling thread. On virtual time it advances the shared clock instead, and runs
    /// what the other queues have due meanwhile.
    virtual void sleep(double seconds) = 0;
};

} // namespace fadewell
