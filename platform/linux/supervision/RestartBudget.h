#pragma once

namespace fadewell {

/// How often a program that failed is started again: once, and once more after each run that has
/// gone well for long enough. A pure value; times are uptimes in seconds.
class RestartBudget final {
public:
    /// A run as long as this makes up for the failure before it, in seconds.
    static constexpr double goodRun = 600;

    /// Whether a run that began at `started` and failed at `now` may be followed by another.
    [[nodiscard]] bool allows(double started, double now)
    {
        const bool isAllowed = !isSpent_ || now - started >= goodRun;
        isSpent_ = true;
        return isAllowed;
    }

private:
    bool isSpent_ = false;
};

} // namespace fadewell
