#pragma once

#include "base/Subscription.h"
#include "shortcuts/HotKeyService.h"

#include <cstdint>
#include <memory>

namespace fadewell::shortcuts {

/// Shows a callback the key events of this program's own windows and menus, while started. [main]
class LocalEventMonitor final {
public:
    static constexpr std::uint32_t keyDownMask = 1U << 10;
    static constexpr std::uint32_t keyUpMask = 1U << 11;

    /// `events` is a mask of event types; the callback swallows an event by answering true.
    LocalEventMonitor(std::shared_ptr<HotKeyService> service,
                      std::uint32_t events,
                      HotKeyService::KeyFilter callback);

    void start();
    void stop();

private:
    std::shared_ptr<HotKeyService> service_;
    const std::uint32_t events_;
    const HotKeyService::KeyFilter callback_;
    std::optional<Subscription> monitor_; ///< absent while stopped
};

} // namespace fadewell::shortcuts
