#pragma once

#include "base/LogSink.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <vector>

namespace fadewell {

/// Keeps the last messages in memory, for whoever looks for a fault afterwards, and passes each on
/// to another sink. It keeps `info` and above also where that sink wants less. [any thread, never
/// the audio thread]
class RecentLog final : public LogSink {
public:
    struct Entry {
        std::chrono::system_clock::time_point at;
        LogMessage message;
    };

    static constexpr std::size_t usualSize = 500; ///< messages

    explicit RecentLog(std::shared_ptr<LogSink> next, std::size_t size = usualSize);

    [[nodiscard]] bool accepts(LogLevel level) const override;
    void write(const LogMessage& message) override;

    /// Oldest first.
    [[nodiscard]] std::vector<Entry> entries() const;

    /// The program's sink, where it is one of these; absent otherwise.
    [[nodiscard]] static std::shared_ptr<RecentLog> installed();

private:
    const std::shared_ptr<LogSink> next_;
    const std::size_t size_;
    mutable std::mutex mutex_;
    std::deque<Entry> entries_; ///< guarded by `mutex_`
};

} // namespace fadewell
