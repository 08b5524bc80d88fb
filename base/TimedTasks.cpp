#include "base/TimedTasks.h"

#include <cmath>
#include <utility>

namespace fadewell {
namespace {

bool isDead(const TimedTasks::Entry& entry)
{
    return entry.alive && !*entry.alive;
}

} // namespace

void TimedTasks::add(double due, Entry entry)
{
    entries_.emplace(Key{due, (*counter_)++}, std::move(entry));
}

std::optional<TimedTasks::Key> TimedTasks::next()
{
    dropDead();
    if (entries_.empty()) {
        return std::nullopt;
    }
    return entries_.begin()->first;
}

std::size_t TimedTasks::size()
{
    std::erase_if(entries_, [](const auto& entry) { return isDead(entry.second); });
    return entries_.size();
}

std::optional<TimedTasks::Entry> TimedTasks::takeDue(double now)
{
    dropDead();
    if (entries_.empty() || entries_.begin()->first.first > now) {
        return std::nullopt;
    }
    const double due = entries_.begin()->first.first;
    Entry entry = std::move(entries_.extract(entries_.begin()).mapped());
    if (entry.interval > 0) {
        const double missed = std::floor((now - due) / entry.interval);
        add(due + (missed + 1) * entry.interval, entry);
    }
    return entry;
}

void TimedTasks::dropDead()
{
    while (!entries_.empty() && isDead(entries_.begin()->second)) {
        entries_.erase(entries_.begin());
    }
}

} // namespace fadewell
