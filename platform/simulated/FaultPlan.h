#pragma once

#include "platform/simulated/Fault.h"

#include <limits>
#include <mutex>
#include <optional>
#include <vector>

namespace fadewell {

/// Failures on demand. Of several faults that match, the one planned first strikes. [any thread]
class FaultPlan final {
public:
    static constexpr int always = std::numeric_limits<int>::max();

    void add(const Fault& fault);

    /// The next `times` of this call (for one property, when a selector is given) fail.
    void failNext(HardwareCall call,
                  OSStatus status,
                  int times = 1,
                  AudioObjectPropertySelector selector = 0);
    /// They block the caller first.
    void delay(HardwareCall call, double seconds, int times = 1);
    /// The object that the next such call addresses disappears meanwhile.
    void vanish(HardwareCall call);
    /// The next such create answers success without an object.
    void giveNothing(HardwareCall call);
    void clear();

    /// Uses up one strike of the first fault that matches.
    [[nodiscard]] std::optional<Fault>
    take(HardwareCall call, AudioObjectPropertySelector selector, AudioObjectID object);

private:
    std::mutex mutex_;
    std::vector<Fault> faults_;
};

} // namespace fadewell
