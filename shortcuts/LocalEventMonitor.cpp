#include "shortcuts/LocalEventMonitor.h"

#include <utility>

namespace fadewell::shortcuts {

LocalEventMonitor::LocalEventMonitor(std::shared_ptr<HotKeyService> service,
                                     std::uint32_t events,
                                     HotKeyService::KeyFilter callback)
    : service_(std::move(service))
    , events_(events)
    , callback_(std::move(callback))
{}

void LocalEventMonitor::start()
{
    if (!monitor_) {
        monitor_ =
            service_->monitorKeys([events = events_, callback = callback_](const KeyEvent& event) {
                const auto bit = 1U << static_cast<std::uint32_t>(event.type);
                return (events & bit) != 0 && callback(event);
            });
    }
}

void LocalEventMonitor::stop()
{
    monitor_.reset();
}

} // namespace fadewell::shortcuts
