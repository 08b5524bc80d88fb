#pragma once

#include "base/UserDefaults.h"

#include <functional>
#include <mutex>

namespace fadewell {

/// Settings that live as long as the object. Counts writes, so that a test can see one too many.
class MemoryUserDefaults final : public UserDefaults {
public:
    [[nodiscard]] std::optional<Value> value(std::string_view key) const override;
    void set(std::string_view key, Value value) override;
    void remove(std::string_view key) override;
    [[nodiscard]] std::vector<std::string> keys() const override;
    void flush() override;

    /// Calls of set and remove so far.
    [[nodiscard]] int writes() const;
    /// Calls of flush so far.
    [[nodiscard]] int flushes() const;

private:
    mutable std::mutex mutex_;
    std::map<std::string, Value, std::less<>> values_;
    int writes_ = 0;
    int flushes_ = 0;
};

} // namespace fadewell
