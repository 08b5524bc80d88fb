#include "shortcuts/KeyboardShortcuts.h"

#include <algorithm>
#include <utility>

namespace fadewell::shortcuts {

bool KeyboardShortcuts::hasHandlers(const Name& name) const
{
    return keyDownHandlers_.contains(name) || keyUpHandlers_.contains(name) ||
           keyDownStreams_.contains(name) || keyUpStreams_.contains(name);
}

std::set<Name> KeyboardShortcuts::namesWithHandlers() const
{
    std::set<Name> names;
    for (const auto* handlers : {&keyDownHandlers_, &keyUpHandlers_}) {
        for (const auto& [name, actions] : *handlers) {
            names.insert(name);
        }
    }
    for (const auto* streams : {&keyDownStreams_, &keyUpStreams_}) {
        for (const auto& [name, listeners] : *streams) {
            names.insert(name);
        }
    }
    return names;
}

std::vector<Name> KeyboardShortcuts::namesUsing(const Shortcut& used) const
{
    std::vector<Name> names;
    for (const auto& name : namesWithHandlers()) {
        if (!pausedNames_.contains(name) && shortcut(name) == used) {
            names.push_back(name);
        }
    }
    return names;
}

void KeyboardShortcuts::dropIfUnused(const Shortcut& unused, const Name* except)
{
    const auto users = namesUsing(unused);
    const bool isNeeded = std::any_of(users.begin(), users.end(), [except](const Name& user) {
        return !except || user != *except;
    });
    if (!isNeeded) {
        hotKeys_.erase(unused);
    }
}

void KeyboardShortcuts::dropHotKey(const Name& name)
{
    if (const auto old = shortcut(name)) {
        dropIfUnused(*old, &name);
    }
}

void KeyboardShortcuts::registerIfNeeded(const Name& name)
{
    const bool isPossible = service_->support() == HotKeyService::Support::any;
    if (pausedNames_.contains(name) || !hasHandlers(name) || !isPossible) {
        return;
    }
    const auto wanted = shortcut(name);
    if (!wanted || hotKeys_.contains(*wanted)) {
        return;
    }
    const auto fire = [weak = weak_from_this(), used = *wanted](bool isKeyDown) {
        if (const auto self = weak.lock()) {
            self->run(self->namesUsing(used), isKeyDown);
        }
    };
    const auto hotKey = std::make_shared<HotKey>(
        center_, *wanted, [fire] { fire(true); }, [fire] { fire(false); });
    if (!center_->registerHotKey(hotKey)) {
        log_.notice("The combination for {} can't be used: another program holds it, or the "
                    "keyboard has no such key",
                    name.rawValue);
        return;
    }
    hotKey->onRegistrationFailed =
        [weak = weak_from_this(), used = *wanted, failed = hotKey.get()] {
            if (const auto self = weak.lock()) {
                self->dropFailed(used, failed);
            }
        };
    hotKeys_.emplace(*wanted, hotKey);
}

// The next change of the name's shortcut makes a fresh one.
void KeyboardShortcuts::dropFailed(const Shortcut& used, const HotKey* failed)
{
    const auto found = hotKeys_.find(used);
    if (found != hotKeys_.end() && found->second.get() == failed) {
        hotKeys_.erase(found);
    }
}

void KeyboardShortcuts::registerEverything()
{
    for (const auto& name : namesWithHandlers()) {
        registerIfNeeded(name);
    }
}

void KeyboardShortcuts::run(const std::vector<Name>& names, bool isKeyDown)
{
    // Collected first: an action may change any of this.
    Actions actions;
    const auto& handlers = isKeyDown ? keyDownHandlers_ : keyUpHandlers_;
    const auto& streams = isKeyDown ? keyDownStreams_ : keyUpStreams_;
    for (const auto& name : names) {
        if (const auto found = handlers.find(name); found != handlers.end()) {
            actions.insert(actions.end(), found->second.begin(), found->second.end());
        }
        if (const auto found = streams.find(name); found != streams.end()) {
            for (const auto& [id, handler] : found->second) {
                actions.push_back(handler);
            }
        }
    }
    for (const auto& action : actions) {
        action();
    }
}

void KeyboardShortcuts::runNamed(const std::string& rawValue, bool isKeyDown)
{
    std::vector<Name> names;
    for (const auto& name : namesWithHandlers()) {
        if (name.rawValue == rawValue && !pausedNames_.contains(name)) {
            names.push_back(name);
        }
    }
    run(names, isKeyDown);
}

void KeyboardShortcuts::bindNamed(std::vector<NamedBinding> bindings)
{
    mainQueue_->assertCurrent();
    bindings_ = std::move(bindings);
    offerBindings();
}

void KeyboardShortcuts::offerBindings()
{
    if (bindings_.empty() || service_->support() != HotKeyService::Support::portal) {
        return;
    }
    for (auto& binding : bindings_) {
        binding.preferred = shortcut(Name{binding.id});
    }
    const auto status = service_->bindNamed(
        bindings_, [weak = weak_from_this()](const std::string& id, bool isPressed) {
            const auto self = weak.lock();
            if (self && self->isEnabled_ && !self->activeRecorder_) {
                self->runNamed(id, isPressed);
            }
        });
    if (status != noErr) {
        log_.error("The desktop refused the shortcuts ({})", status);
    }
}

void KeyboardShortcuts::supportChanged()
{
    mainQueue_->assertCurrent();
    if (service_->support() == HotKeyService::Support::any) {
        registerEverything();
    }
    offerBindings();
}

} // namespace fadewell::shortcuts
