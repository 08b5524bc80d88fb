#pragma once

#include "base/LogSink.h"

#include <fmt/format.h>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fadewell {

/// Collects every log message while it lives, as "category level: text".
class CapturedLog final {
public:
    CapturedLog() { LogSink::install(sink_); }
    ~CapturedLog() { LogSink::install(nullptr); }
    CapturedLog(const CapturedLog&) = delete;
    CapturedLog& operator=(const CapturedLog&) = delete;

    /// The lines since the last call.
    [[nodiscard]] std::vector<std::string> take()
    {
        const std::lock_guard lock(sink_->mutex);
        return std::exchange(sink_->lines, {});
    }

private:
    struct Sink final : LogSink {
        [[nodiscard]] bool accepts(LogLevel /*level*/) const override { return true; }
        void write(const LogMessage& message) override
        {
            static constexpr std::string_view names[] = {"debug", "info", "notice", "error"};
            const std::lock_guard lock(mutex);
            lines.push_back(fmt::format("{} {}: {}",
                                        message.category,
                                        names[static_cast<std::size_t>(message.level)],
                                        message.text));
        }

        std::mutex mutex;
        std::vector<std::string> lines;
    };

    std::shared_ptr<Sink> sink_ = std::make_shared<Sink>();
};

} // namespace fadewell
