#include "control/LoginItemMethods.h"

#include "control/values/BusNames.h"

namespace fadewell {
namespace {

QString nameOf(LoginItemStatus status)
{
    switch (status) {
    case LoginItemStatus::notRegistered:
        return "notRegistered";
    case LoginItemStatus::enabled:
        return "enabled";
    case LoginItemStatus::requiresApproval:
        return "requiresApproval";
    case LoginItemStatus::notFound:
        break;
    }
    return "notFound";
}

/// The status after `act`; an error where there is no login item.
template <class Act>
BusReply withItem(const std::shared_ptr<LoginItem>& item, Act act)
{
    if (!item) {
        return BusError{bus::error::notSupported,
                        "Starting with the session can't be chosen here."};
    }
    act(*item);
    return QVariantList{nameOf(item->status.get())};
}

} // namespace

std::vector<BusMethod> loginItemMethods(std::shared_ptr<LoginItem> item)
{
    return {
        {"LoginItem",
         {},
         {{"status", "s"}},
         [item](const QVariantList&) {
             return withItem(item, [](LoginItem& each) { each.refresh(); });
         }},
        {"SetLoginItem", {{"enabled", "b"}}, {{"status", "s"}}, [item](const QVariantList& args) {
             return withItem(item, [&](LoginItem& each) { each.setEnabled(args[0].toBool()); });
         }}};
}

} // namespace fadewell
