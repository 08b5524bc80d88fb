#include "platform/simulated/FaultPlan.h"

#include <algorithm>

namespace fadewell {

void FaultPlan::add(const Fault& fault)
{
    const std::lock_guard lock(mutex_);
    faults_.push_back(fault);
}

void FaultPlan::failNext(HardwareCall call,
                         OSStatus status,
                         int times,
                         AudioObjectPropertySelector selector)
{
    add({.call = call, .selector = selector, .times = times, .status = status});
}

void FaultPlan::delay(HardwareCall call, double seconds, int times)
{
    add({.call = call, .times = times, .delay = seconds});
}

void FaultPlan::vanish(HardwareCall call)
{
    add({.call = call, .objectVanishes = true});
}

void FaultPlan::giveNothing(HardwareCall call)
{
    add({.call = call, .givesNothing = true});
}

void FaultPlan::clear()
{
    const std::lock_guard lock(mutex_);
    faults_.clear();
}

std::optional<Fault>
FaultPlan::take(HardwareCall call, AudioObjectPropertySelector selector, AudioObjectID object)
{
    const std::lock_guard lock(mutex_);
    const auto found = std::ranges::find_if(faults_, [&](const Fault& fault) {
        return fault.call == call && (fault.selector == 0 || fault.selector == selector) &&
               (fault.object == 0 || fault.object == object);
    });
    if (found == faults_.end()) {
        return std::nullopt;
    }
    const Fault fault = *found;
    if (found->times != always && --found->times <= 0) {
        faults_.erase(found);
    }
    return fault;
}

} // namespace fadewell
