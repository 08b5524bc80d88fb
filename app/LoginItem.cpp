#include "app/LoginItem.h"

#include <utility>

namespace fadewell {

LoginItem::LoginItem(std::shared_ptr<LoginItemService> service)
    : status(service->status())
    , service_(std::move(service))
{
    service_->onChanged([this] { refresh(); });
}

LoginItem::~LoginItem()
{
    service_->onChanged(nullptr);
}

bool LoginItem::isSwitchedOn() const
{
    return status.get() == LoginItemStatus::enabled ||
           status.get() == LoginItemStatus::requiresApproval;
}

void LoginItem::setEnabled(bool on)
{
    if (const auto error = on ? service_->registerItem() : service_->unregisterItem()) {
        log_.error("Login item change failed: {}", *error);
    }
    refresh();
}

void LoginItem::refresh()
{
    status.set(service_->status());
}

} // namespace fadewell
