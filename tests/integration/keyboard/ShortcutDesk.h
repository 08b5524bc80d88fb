#pragma once

#include "tests/integration/keyboard/XServer.h"
#include "tests/integration/support/Fadewell.h"

#include <optional>
#include <sys/types.h>
#include <vector>

namespace fadewell::integration {

/// A Fadewell on a desktop with a keyboard, whose four shortcuts are Super and F1 to F4.
class ShortcutDesk {
public:
    enum class Key {
        toggleMicrophone,
        toggleCallMode,
        raise,
        lower
    };

    /// Writes the settings of the session of the environment, and sets its DISPLAY.
    explicit ShortcutDesk(Fadewell::Windows windows = Fadewell::Windows::none);
    ~ShortcutDesk();
    ShortcutDesk(const ShortcutDesk&) = delete;
    ShortcutDesk& operator=(const ShortcutDesk&) = delete;

    void press(Key key);
    void release(Key key);
    void strike(Key key);
    /// X keycodes, one after the other.
    void type(const std::vector<int>& keycodes);

    /// Whether any program could have the combination: nobody holds it.
    [[nodiscard]] bool isFree(Key key);
    /// Whether a window has the keyboard.
    [[nodiscard]] bool hasFocus() { return windows_.hasFocus(); }

    /// Puts a window of this process in front; 0: no window at all.
    void bringToFront(pid_t process);

    [[nodiscard]] Fadewell& fadewell() { return *fadewell_; }

private:
    XServer server_;
    OtherClient windows_;
    std::optional<Fadewell> fadewell_;
};

} // namespace fadewell::integration
