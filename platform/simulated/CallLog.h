#pragma once

#include "platform/simulated/CallRecord.h"

#include <cstddef>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

namespace fadewell {

/// What the sound system was asked to do, in order; the newest calls when there were very many.
/// [any thread]
class CallLog final {
public:
    static constexpr std::size_t capacity = 100'000;

    void add(const CallRecord& record);
    void clear();

    [[nodiscard]] std::vector<CallRecord> records() const;

    /// The names of the calls that change something, such as {"createProcessTap", "start"}.
    [[nodiscard]] std::vector<std::string> changes() const;

    /// How many times this was called; 0 counts every selector and every object.
    [[nodiscard]] int count(HardwareCall call,
                            AudioObjectPropertySelector selector = 0,
                            AudioObjectID object = 0) const;

private:
    mutable std::mutex mutex_;
    std::deque<CallRecord> records_;
};

} // namespace fadewell
