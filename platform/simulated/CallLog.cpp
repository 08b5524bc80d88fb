#include "platform/simulated/CallLog.h"

#include <algorithm>

namespace fadewell {

void CallLog::add(const CallRecord& record)
{
    const std::lock_guard lock(mutex_);
    if (records_.size() == capacity) {
        records_.pop_front();
    }
    records_.push_back(record);
}

void CallLog::clear()
{
    const std::lock_guard lock(mutex_);
    records_.clear();
}

std::vector<CallRecord> CallLog::records() const
{
    const std::lock_guard lock(mutex_);
    return {records_.begin(), records_.end()};
}

std::vector<std::string> CallLog::changes() const
{
    const std::lock_guard lock(mutex_);
    std::vector<std::string> names;
    for (const auto& record : records_) {
        if (isChange(record.call)) {
            names.emplace_back(name(record.call));
        }
    }
    return names;
}

int CallLog::count(HardwareCall call,
                   AudioObjectPropertySelector selector,
                   AudioObjectID object) const
{
    const std::lock_guard lock(mutex_);
    return static_cast<int>(std::ranges::count_if(records_, [&](const CallRecord& record) {
        return record.call == call && (selector == 0 || record.address.mSelector == selector) &&
               (object == 0 || record.object == object);
    }));
}

} // namespace fadewell
