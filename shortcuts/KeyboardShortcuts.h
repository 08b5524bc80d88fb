#pragma once

#include "base/Logger.h"
#include "base/SerialQueue.h"
#include "base/Subscription.h"
#include "base/Timer.h"
#include "base/UserDefaults.h"
#include "shortcuts/HotKeyCenter.h"
#include "shortcuts/HotKeyService.h"
#include "shortcuts/Name.h"
#include "shortcuts/NamedBinding.h"
#include "shortcuts/NotificationCenter.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace fadewell::shortcuts {

class Recorder;

/// Named shortcuts that work in every application: kept in the user defaults, given by the user,
/// bound to actions by the program.
///
/// One in a process, on the main queue. A hot key belongs to a combination and serves every name
/// that has it.
class KeyboardShortcuts final : public std::enable_shared_from_this<KeyboardShortcuts> {
public:
    using Action = std::function<void()>;
    static constexpr const char* storageKeyPrefix = "KeyboardShortcuts_";

    [[nodiscard]] static std::shared_ptr<KeyboardShortcuts>
    create(std::shared_ptr<SerialQueue> mainQueue,
           std::shared_ptr<UserDefaults> defaults,
           std::shared_ptr<HotKeyService> service);

    /// A name; stores its initial shortcut unless the name has an entry already.
    [[nodiscard]] Name name(std::string rawValue, std::optional<Shortcut> initialShortcut = {});

    /// Absent when it has none, was cleared, or what is stored can't be read.
    [[nodiscard]] std::optional<Shortcut> shortcut(const Name& name) const;
    /// Gives the name a shortcut or, without one, clears it for good.
    void storeShortcut(const std::optional<Shortcut>& shortcut, const Name& name);
    void restoreInitialShortcuts(const std::vector<Name>& names);
    /// Every name with an entry in the user defaults.
    [[nodiscard]] std::vector<Name> storedNames() const;

    /// Actions stay for the life of the process, or until all are removed.
    void addKeyDownAction(const Name& name, Action action);
    void addKeyUpAction(const Name& name, Action action);
    void removeAllActions();

    /// Call `handler` as long as the subscription lives.
    [[nodiscard]] Subscription keyDownEvents(const Name& name, Action handler);
    [[nodiscard]] Subscription keyUpEvents(const Name& name, Action handler);
    /// On every press, and again and again while it is held.
    [[nodiscard]] Subscription repeatingKeyDownEvents(const Name& name, Action handler);

    /// A paused name has no hot key and gets no events.
    void setPaused(const Name& name, bool isPaused);

    /// Turns all hot keys on or off; on in the beginning.
    void setEnabled(bool isEnabled);
    /// While a recorder records, no hot key is live. The newest recorder is the active one.
    void beginRecording(const Recorder& recorder);
    /// Does nothing for a recorder that is not, or no longer, the active one.
    void endRecording(const Recorder& recorder);
    [[nodiscard]] bool isRecording() const { return activeRecorder_ != nullptr; }

    /// Where the desktop assigns combinations: offers it these names, which then run their actions
    /// whatever is stored. Does nothing elsewhere, but is remembered until such a desktop turns up.
    void bindNamed(std::vector<NamedBinding> bindings);

    [[nodiscard]] const std::shared_ptr<NotificationCenter>& notifications() const
    {
        return notifications_;
    }
    [[nodiscard]] const std::shared_ptr<HotKeyService>& service() const { return service_; }
    [[nodiscard]] const std::shared_ptr<HotKeyCenter>& center() const { return center_; }

private:
    using Actions = std::vector<Action>;
    using Handlers = std::map<Name, Actions>;
    using Streams = std::map<Name, std::map<int, Action>>;

    KeyboardShortcuts(std::shared_ptr<SerialQueue> mainQueue,
                      std::shared_ptr<UserDefaults> defaults,
                      std::shared_ptr<HotKeyService> service);

    [[nodiscard]] static std::string storageKey(const Name& name);
    [[nodiscard]] bool hasEntry(const Name& name) const;
    [[nodiscard]] bool isCleared(const Name& name) const;

    [[nodiscard]] bool hasHandlers(const Name& name) const;
    [[nodiscard]] std::set<Name> namesWithHandlers() const;
    /// The live names with handlers and this combination.
    [[nodiscard]] std::vector<Name> namesUsing(const Shortcut& shortcut) const;

    void registerIfNeeded(const Name& name);
    void dropFailed(const Shortcut& used, const HotKey* failed);
    void registerEverything();
    /// Drops the hot key of the name's combination unless another name needs it.
    void dropHotKey(const Name& name);
    void dropIfUnused(const Shortcut& shortcut, const Name* except = nullptr);
    void change(const Name& name, const std::function<void(const std::string& key)>& write);
    void run(const std::vector<Name>& names, bool isKeyDown);
    void runNamed(const std::string& rawValue, bool isKeyDown);
    void offerBindings();
    void supportChanged();
    [[nodiscard]] Subscription listen(Streams& streams, const Name& name, Action handler);
    void updateEnabled();

    const Logger log_{"shortcuts"};
    const std::shared_ptr<SerialQueue> mainQueue_;
    const std::shared_ptr<UserDefaults> defaults_;
    const std::shared_ptr<HotKeyService> service_;
    const std::shared_ptr<NotificationCenter> notifications_;
    const std::shared_ptr<HotKeyCenter> center_;
    Handlers keyDownHandlers_;
    Handlers keyUpHandlers_;
    Streams keyDownStreams_;
    Streams keyUpStreams_;
    int nextStreamID_ = 0;
    std::set<Name> pausedNames_;
    std::map<Shortcut, std::shared_ptr<HotKey>> hotKeys_;
    std::vector<NamedBinding> bindings_;
    bool isEnabled_ = true;
    const Recorder* activeRecorder_ = nullptr;
    Subscription supportObserver_;
};

} // namespace fadewell::shortcuts
