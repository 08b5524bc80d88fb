#pragma once

#include "base/Clock.h"

namespace fadewell {

/// The machine's monotonic clock, which stands still while it sleeps. [any thread]
class SystemClock final : public Clock {
public:
    [[nodiscard]] double uptime() const override;
    void sleep(double seconds) override;
};

} // namespace fadewell
