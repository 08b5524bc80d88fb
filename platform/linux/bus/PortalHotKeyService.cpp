#include "platform/linux/bus/PortalHotKeyService.h"

#include <utility>

namespace fadewell {

using namespace shortcuts;

PortalHotKeyService::PortalHotKeyService(const QDBusConnection& bus)
    : portal_(bus,
              {.availabilityChanged = [this] { supportListeners_.callAll(); },
               .triggersChanged = [this] { triggerListeners_.callAll(); },
               .fired =
                   [this](const std::string& id, bool isPressed) {
                       if (fired_) {
                           fired_(id, isPressed);
                       }
                   }})
{}

HotKeyService::Support PortalHotKeyService::support() const
{
    return portal_.isAvailable() ? Support::portal : Support::none;
}

OSStatus PortalHotKeyService::bindNamed(std::vector<NamedBinding> bindings, Fired fired)
{
    if (!portal_.isAvailable()) {
        return eventHotKeyInvalidErr;
    }
    fired_ = std::move(fired);
    PortalShortcuts wanted;
    for (const auto& binding : bindings) {
        wanted.append(toPortal(binding));
    }
    portal_.bind(std::move(wanted));
    return noErr;
}

std::map<std::string, std::string> PortalHotKeyService::namedTriggers() const
{
    return portal_.triggers();
}

} // namespace fadewell
