#include "base/RecentLog.h"

#include <utility>

namespace fadewell {

RecentLog::RecentLog(std::shared_ptr<LogSink> next, std::size_t size)
    : next_(std::move(next))
    , size_(size)
{}

bool RecentLog::accepts(LogLevel level) const
{
    return level >= LogLevel::info || next_->accepts(level);
}

void RecentLog::write(const LogMessage& message)
{
    constexpr std::size_t longest = 2000; // Other programs choose how long their names are.
    Entry entry{std::chrono::system_clock::now(), message};
    if (entry.message.text.size() > longest) {
        entry.message.text.resize(longest);
    }
    {
        const std::lock_guard lock(mutex_);
        entries_.push_back(std::move(entry));
        if (entries_.size() > size_) {
            entries_.pop_front();
        }
    }
    if (next_->accepts(message.level)) {
        next_->write(message);
    }
}

std::vector<RecentLog::Entry> RecentLog::entries() const
{
    const std::lock_guard lock(mutex_);
    return {entries_.begin(), entries_.end()};
}

std::shared_ptr<RecentLog> RecentLog::installed()
{
    return std::dynamic_pointer_cast<RecentLog>(LogSink::installed());
}

} // namespace fadewell
