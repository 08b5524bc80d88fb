#pragma once

#include "shortcuts/HotKeyService.h"
#include "shortcuts/Shortcut.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace fadewell::shortcuts {

class HotKeyCenter;

/// One combination that the center keeps registered with the system until this is destroyed. [main]
class HotKey final {
public:
    using Action = std::function<void()>;

    /// Takes the center's next id; registers nothing yet.
    HotKey(const std::shared_ptr<HotKeyCenter>& center,
           const Shortcut& shortcut,
           Action keyDown,
           Action keyUp);
    ~HotKey();
    HotKey(const HotKey&) = delete;
    HotKey& operator=(const HotKey&) = delete;

    const std::int64_t carbonKeyCode;
    const std::int64_t carbonModifiers;
    const Action onKeyDown;
    const Action onKeyUp;
    Action onRegistrationFailed; ///< when registering it again fails; may be empty
    const std::int64_t id;       ///< unique in the process
    EventHotKeyRef eventHotKeyRef = 0;

private:
    const std::weak_ptr<HotKeyCenter> center_;
};

/// Refers to a hot key without keeping it.
struct WeakHotKey {
    std::weak_ptr<HotKey> value;
};

} // namespace fadewell::shortcuts
