#pragma once

#include "app/LoginItemService.h"
#include "base/Logger.h"
#include "base/Observed.h"

#include <memory>

namespace fadewell {

/// Lets the user choose whether the program starts with the session. Shows what the desktop
/// decided, not what was asked for. [main queue]
class LoginItem final {
public:
    explicit LoginItem(std::shared_ptr<LoginItemService> service);
    ~LoginItem();
    LoginItem(const LoginItem&) = delete;
    LoginItem& operator=(const LoginItem&) = delete;

    Observed<LoginItemStatus> status;

    /// What a switch shows: also on while something else still has to allow it.
    [[nodiscard]] bool isSwitchedOn() const;

    /// A failure is logged and shows in the status only.
    void setEnabled(bool on);

    /// Looks again, for what others changed.
    void refresh();

private:
    const std::shared_ptr<LoginItemService> service_;
    const Logger log_{"login-item"};
};

} // namespace fadewell
