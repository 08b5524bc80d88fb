#include "platform/simulated/SimulatedHotKeyService.h"

namespace fadewell {
namespace {

using namespace shortcuts;

constexpr const char* supportChange = "support";
constexpr const char* layoutChange = "layout";
constexpr const char* triggerChange = "triggers";

} // namespace

std::vector<Shortcut> SimulatedHotKeyService::registered() const
{
    std::vector<Shortcut> all;
    for (const auto& [ref, registration] : registrations_) {
        all.push_back(registration.shortcut);
    }
    return all;
}

bool SimulatedHotKeyService::isMonitored() const
{
    return !monitors_->empty();
}

OSStatus SimulatedHotKeyService::send(const HotKeyEvent* event)
{
    const bool isWanted = event == nullptr || types_.contains(event->type);
    return handler_ && isWanted ? handler_(event) : eventNotHandledErr;
}

bool SimulatedHotKeyService::strike(const Shortcut& shortcut, bool isPressed)
{
    const auto registrations = registrations_; // What is pressed may change them.
    for (const auto& [ref, registration] : registrations) {
        if (registration.shortcut == shortcut) {
            HotKeyEvent event{.type = {kEventClassKeyboard,
                                       isPressed ? kEventHotKeyPressed : kEventHotKeyReleased},
                              .directObject = {registration.id, noErr}};
            return send(&event) == noErr;
        }
    }
    return false;
}

bool SimulatedHotKeyService::deliver(const KeyEvent& event)
{
    const auto monitors = *monitors_;
    for (const auto& [id, filter] : monitors) {
        if (filter(event)) {
            return true;
        }
    }
    return false;
}

bool SimulatedHotKeyService::deliverLocalKey(std::uint32_t nativeKey,
                                             bool isPressed,
                                             bool isRepeat,
                                             std::uint32_t modifierFlags)
{
    return deliver({isPressed ? KeyEvent::Type::keyDown : KeyEvent::Type::keyUp,
                    static_cast<std::uint16_t>(nativeKey),
                    modifierFlags,
                    isRepeat});
}

void SimulatedHotKeyService::changeSupport(Support support)
{
    offered = support;
    changes_.post(supportChange);
}

void SimulatedHotKeyService::changeLayout(std::map<std::uint32_t, std::string> layout)
{
    characters = std::move(layout);
    changes_.post(layoutChange);
}

void SimulatedHotKeyService::changeTriggers(std::map<std::string, std::string> assigned)
{
    triggers = std::move(assigned);
    changes_.post(triggerChange);
}

Subscription SimulatedHotKeyService::observe(const char* what, std::function<void()> changed)
{
    return changes_.observe(what, [changed = std::move(changed)](const auto&) { changed(); });
}

Subscription SimulatedHotKeyService::onSupportChanged(std::function<void()> changed)
{
    return observe(supportChange, std::move(changed));
}

Subscription SimulatedHotKeyService::onLayoutChanged(std::function<void()> changed)
{
    return observe(layoutChange, std::move(changed));
}

Subscription SimulatedHotKeyService::onNamedTriggersChanged(std::function<void()> changed)
{
    return observe(triggerChange, std::move(changed));
}

OSStatus SimulatedHotKeyService::registerEventHotKey(std::uint32_t keyCode,
                                                     std::uint32_t modifiers,
                                                     HotKeyID id,
                                                     EventHotKeyRef& out)
{
    const Shortcut shortcut{keyCode, modifiers};
    if (offered != Support::any) {
        return eventHotKeyInvalidErr;
    }
    if (heldByOthers.contains(shortcut)) {
        return eventHotKeyExistsErr;
    }
    out = ++lastRef_;
    registrations_.emplace(out, Registration{shortcut, id});
    return noErr;
}

OSStatus SimulatedHotKeyService::unregisterEventHotKey(EventHotKeyRef ref)
{
    return registrations_.erase(ref) == 1 ? noErr : eventHotKeyInvalidErr;
}

OSStatus SimulatedHotKeyService::installEventHandler(Handler handler)
{
    if (refusesHandler) {
        return eventNotHandledErr;
    }
    handler_ = std::move(handler);
    return noErr;
}

void SimulatedHotKeyService::addEventTypes(std::span<const EventType> types)
{
    types_.insert(types.begin(), types.end());
}

void SimulatedHotKeyService::removeEventTypes(std::span<const EventType> types)
{
    for (const auto& type : types) {
        types_.erase(type);
    }
}

Subscription SimulatedHotKeyService::monitorKeys(KeyFilter filter)
{
    const int id = nextMonitor_++;
    monitors_->emplace(id, std::move(filter));
    return Subscription([monitors = monitors_, id] { monitors->erase(id); });
}

std::string SimulatedHotKeyService::character(std::uint32_t keyCode)
{
    const auto found = characters.find(keyCode);
    return found == characters.end() ? "" : found->second;
}

OSStatus SimulatedHotKeyService::bindNamed(std::vector<NamedBinding> bindings, Fired fired)
{
    if (offered != Support::portal) {
        return eventHotKeyInvalidErr;
    }
    bound = std::move(bindings);
    fired_ = std::move(fired);
    return noErr;
}

} // namespace fadewell
