#pragma once

#include "base/Observed.h"
#include "base/Subscription.h"
#include "shortcuts/KeyEvent.h"
#include "shortcuts/KeyboardShortcuts.h"
#include "shortcuts/LocalEventMonitor.h"
#include "shortcuts/Messages.h"
#include "shortcuts/RecorderHost.h"
#include "shortcuts/RecorderPolicy.h"
#include "shortcuts/Sandbox.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace fadewell::shortcuts {

/// What a shortcut field does: turns a key press into a shortcut, checks it and stores it. The
/// field itself only shows what is observed here. [main queue]
class Recorder final : public std::enable_shared_from_this<Recorder> {
public:
    enum class StorageMode {
        name,   ///< in the name's storage
        binding ///< with the caller
    };

    /// What the checks need to know of the system.
    struct System {
        int majorVersion = 0; ///< of macOS; 0 elsewhere
        bool isSandboxed = shortcuts::isSandboxed();
    };

    struct Options {
        StorageMode storageMode = StorageMode::name;
        Name shortcutName{};                       ///< in name mode
        std::optional<Shortcut> bindingShortcut{}; ///< in binding mode: the value to begin with
        ConflictPolicy conflictPolicy{};
        ValidateShortcut validateShortcut{};                            ///< may be empty
        std::function<void(const std::optional<Shortcut>&)> onChange{}; ///< may be empty
        System system{};
    };

    /// `host` must outlive the recorder.
    [[nodiscard]] static std::shared_ptr<Recorder>
    create(std::shared_ptr<KeyboardShortcuts> shortcuts,
           RecorderHost& host,
           Options options,
           Messages messages = Messages::current());
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    Observed<std::string> text; ///< the shortcut; empty: the placeholder is shown
    Observed<bool> isRecording;
    Observed<bool> showsCancelButton;

    /// Whether clicking may start recording.
    bool canBecomeKey = true;

    [[nodiscard]] std::optional<Shortcut> shortcut() const;

    /// The field got the keyboard; false when it is not to record. Its window has to be key.
    bool becomeFirstResponder();
    /// The field lost the keyboard, or its window is no longer key.
    void endRecording();
    /// The cancel button.
    void clear();
    /// Takes another name's place, as when a field is used again for another row.
    void setShortcutName(const Name& name);

private:
    struct Attempt {
        Shortcut shortcut;
        std::uint32_t modifierFlags;
    };
    using Next = std::function<void()>;

    Recorder(std::shared_ptr<KeyboardShortcuts> shortcuts,
             RecorderHost& host,
             Options options,
             Messages messages);
    void observeName();
    void show();
    void stop();
    void store(const std::optional<Shortcut>& shortcut);
    [[nodiscard]] bool handleKey(const KeyEvent& event);

    // The checks in their order; each goes on to the next.
    void checkMenuItems(const Attempt& attempt);
    void checkPlatform(const Attempt& attempt);
    void checkSystem(const Attempt& attempt);
    void checkCaller(const Attempt& attempt);
    void accept(const Shortcut& accepted);

    void presentConflict(ConflictBehavior behavior,
                         std::string message,
                         std::string informativeText,
                         Next accepted);
    void presentAlert(const Alert& alert, std::function<void(int)> answered);

    const std::shared_ptr<KeyboardShortcuts> shortcuts_;
    RecorderHost& host_;
    Options options_;
    const Messages messages_;
    bool isPresenting_ = false;
    LocalEventMonitor eventMonitor_;
    Subscription shortcutsNameChangeObserver_;
    Subscription layoutObserver_;
};

} // namespace fadewell::shortcuts
