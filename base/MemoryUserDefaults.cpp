#include "base/MemoryUserDefaults.h"

#include <utility>

namespace fadewell {

std::optional<UserDefaults::Value> MemoryUserDefaults::value(std::string_view key) const
{
    const std::lock_guard lock(mutex_);
    const auto found = values_.find(key);
    return found == values_.end() ? std::nullopt : std::optional(found->second);
}

void MemoryUserDefaults::set(std::string_view key, Value value)
{
    const std::lock_guard lock(mutex_);
    ++writes_;
    values_.insert_or_assign(std::string(key), std::move(value));
}

void MemoryUserDefaults::remove(std::string_view key)
{
    const std::lock_guard lock(mutex_);
    ++writes_;
    if (const auto found = values_.find(key); found != values_.end()) {
        values_.erase(found);
    }
}

std::vector<std::string> MemoryUserDefaults::keys() const
{
    const std::lock_guard lock(mutex_);
    std::vector<std::string> keys;
    for (const auto& [key, value] : values_) {
        keys.push_back(key);
    }
    return keys;
}

void MemoryUserDefaults::flush()
{
    const std::lock_guard lock(mutex_);
    ++flushes_;
}

int MemoryUserDefaults::writes() const
{
    const std::lock_guard lock(mutex_);
    return writes_;
}

int MemoryUserDefaults::flushes() const
{
    const std::lock_guard lock(mutex_);
    return flushes_;
}

} // namespace fadewell
