#include "shortcuts/KeyboardShortcuts.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace fadewell::shortcuts {
namespace {

// What keyboards do by default.
constexpr double repeatDelay = 0.5;
constexpr double repeatInterval = 0.1;

} // namespace

std::shared_ptr<KeyboardShortcuts> KeyboardShortcuts::create(std::shared_ptr<SerialQueue> mainQueue,
                                                             std::shared_ptr<UserDefaults> defaults,
                                                             std::shared_ptr<HotKeyService> service)
{
    const std::shared_ptr<KeyboardShortcuts> made(
        new KeyboardShortcuts(std::move(mainQueue), std::move(defaults), std::move(service)));
    made->supportObserver_ = made->service_->onSupportChanged([weak = std::weak_ptr(made)] {
        if (const auto self = weak.lock()) {
            self->supportChanged();
        }
    });
    return made;
}

KeyboardShortcuts::KeyboardShortcuts(std::shared_ptr<SerialQueue> mainQueue,
                                     std::shared_ptr<UserDefaults> defaults,
                                     std::shared_ptr<HotKeyService> service)
    : mainQueue_(std::move(mainQueue))
    , defaults_(std::move(defaults))
    , service_(std::move(service))
    , notifications_(std::make_shared<NotificationCenter>())
    , center_(HotKeyCenter::create(mainQueue_, service_, notifications_))
{}

std::string KeyboardShortcuts::storageKey(const Name& name)
{
    return storageKeyPrefix + name.rawValue;
}

// An entry of a type that nobody can read is an entry too.
bool KeyboardShortcuts::hasEntry(const Name& name) const
{
    const auto key = storageKey(name);
    if (defaults_->value(key)) {
        return true;
    }
    const auto keys = defaults_->keys();
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

bool KeyboardShortcuts::isCleared(const Name& name) const
{
    return defaults_->get<bool>(storageKey(name)) == false;
}

Name KeyboardShortcuts::name(std::string rawValue, std::optional<Shortcut> initialShortcut)
{
    mainQueue_->assertCurrent();
    Name name{std::move(rawValue), initialShortcut};
    if (initialShortcut && !hasEntry(name)) {
        defaults_->set(storageKey(name), initialShortcut->encoded());
    }
    return name;
}

std::optional<Shortcut> KeyboardShortcuts::shortcut(const Name& name) const
{
    mainQueue_->assertCurrent();
    const auto stored = defaults_->get<std::string>(storageKey(name));
    return stored ? Shortcut::decoded(*stored) : std::nullopt;
}

std::vector<Name> KeyboardShortcuts::storedNames() const
{
    constexpr std::string_view prefix = storageKeyPrefix;
    std::vector<Name> names;
    for (const auto& key : defaults_->keys()) {
        if (key.starts_with(prefix)) {
            names.push_back({key.substr(prefix.size())});
        }
    }
    return names;
}

void KeyboardShortcuts::change(const Name& name,
                               const std::function<void(const std::string&)>& write)
{
    dropHotKey(name);
    write(storageKey(name));
    registerIfNeeded(name);
    notifications_->post(notification::shortcutByNameDidChange, {{notification::nameKey, name}});
}

void KeyboardShortcuts::storeShortcut(const std::optional<Shortcut>& shortcut, const Name& name)
{
    mainQueue_->assertCurrent();
    if (shortcut) {
        change(name, [&](const auto& key) { defaults_->set(key, shortcut->encoded()); });
    } else if (!name.initialShortcut) {
        if (hasEntry(name)) {
            change(name, [&](const auto& key) { defaults_->remove(key); });
        }
    } else if (!isCleared(name)) {
        change(name, [&](const auto& key) { defaults_->set(key, false); });
    }
}

void KeyboardShortcuts::restoreInitialShortcuts(const std::vector<Name>& names)
{
    for (const auto& name : names) {
        storeShortcut(name.initialShortcut, name);
    }
}

void KeyboardShortcuts::addKeyDownAction(const Name& name, Action action)
{
    mainQueue_->assertCurrent();
    keyDownHandlers_[name].push_back(std::move(action));
    registerIfNeeded(name);
}

void KeyboardShortcuts::addKeyUpAction(const Name& name, Action action)
{
    mainQueue_->assertCurrent();
    keyUpHandlers_[name].push_back(std::move(action));
    registerIfNeeded(name);
}

void KeyboardShortcuts::removeAllActions()
{
    mainQueue_->assertCurrent();
    std::set<Name> names;
    for (auto* handlers : {&keyDownHandlers_, &keyUpHandlers_}) {
        for (const auto& [name, actions] : std::exchange(*handlers, {})) {
            names.insert(name);
        }
    }
    for (const auto& name : names) {
        if (const auto old = shortcut(name)) {
            dropIfUnused(*old);
        }
    }
}

Subscription KeyboardShortcuts::listen(Streams& streams, const Name& name, Action handler)
{
    mainQueue_->assertCurrent();
    const int id = nextStreamID_++;
    streams[name].emplace(id, std::move(handler));
    registerIfNeeded(name);
    return Subscription([weak = weak_from_this(), &streams, name, id] {
        const auto self = weak.lock();
        if (!self) {
            return;
        }
        const auto found = streams.find(name);
        found->second.erase(id);
        if (found->second.empty()) {
            streams.erase(found);
        }
        if (const auto old = self->shortcut(name)) {
            self->dropIfUnused(*old);
        }
    });
}

Subscription KeyboardShortcuts::keyDownEvents(const Name& name, Action handler)
{
    return listen(keyDownStreams_, name, std::move(handler));
}

Subscription KeyboardShortcuts::keyUpEvents(const Name& name, Action handler)
{
    return listen(keyUpStreams_, name, std::move(handler));
}

Subscription KeyboardShortcuts::repeatingKeyDownEvents(const Name& name, Action handler)
{
    struct Repeating {
        Timer timer;
        Subscription down;
        Subscription up;
    };
    auto state = std::make_shared<Repeating>();
    const auto weak = std::weak_ptr(state);
    // A release only comes to who still has the combination, in the same way as the press.
    const auto held = [library = weak_from_this(), name] {
        const auto self = library.lock();
        return self && !self->pausedNames_.contains(name)
                   ? std::optional(std::pair(self->shortcut(name), self->center_->mode()))
                   : std::nullopt;
    };
    state->down = keyDownEvents(name, [weak, queue = mainQueue_, handler, held] {
        const auto again = [weak, handler, held, pressed = held()] {
            if (held() == pressed) {
                handler();
            } else if (const auto repeating = weak.lock()) {
                repeating->timer.cancel();
            }
        };
        if (const auto repeating = weak.lock()) {
            repeating->timer = queue->every(repeatDelay, repeatInterval, 0, again);
        }
        handler();
    });
    state->up = keyUpEvents(name, [weak] {
        if (const auto repeating = weak.lock()) {
            repeating->timer.cancel();
        }
    });
    return Subscription([state]() mutable { state.reset(); });
}

void KeyboardShortcuts::setPaused(const Name& name, bool isPaused)
{
    mainQueue_->assertCurrent();
    if (!isPaused) {
        pausedNames_.erase(name);
        registerIfNeeded(name);
        return;
    }
    pausedNames_.insert(name);
    if (const auto current = shortcut(name)) {
        dropIfUnused(*current);
    }
}

void KeyboardShortcuts::setEnabled(bool isEnabled)
{
    isEnabled_ = isEnabled;
    updateEnabled();
}

void KeyboardShortcuts::beginRecording(const Recorder& recorder)
{
    activeRecorder_ = &recorder;
    updateEnabled();
    notifications_->post(notification::recorderActiveStatusDidChange,
                         {{notification::isActiveKey, true}});
}

void KeyboardShortcuts::endRecording(const Recorder& recorder)
{
    if (activeRecorder_ != &recorder) {
        return;
    }
    activeRecorder_ = nullptr;
    updateEnabled();
    notifications_->post(notification::recorderActiveStatusDidChange,
                         {{notification::isActiveKey, false}});
}

void KeyboardShortcuts::updateEnabled()
{
    center_->setEnabled(isEnabled_ && activeRecorder_ == nullptr);
}

} // namespace fadewell::shortcuts
