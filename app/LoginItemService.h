#pragma once

#include <functional>
#include <optional>
#include <string>

namespace fadewell {

/// Whether the program is started with the session.
enum class LoginItemStatus {
    notRegistered,
    enabled,
    requiresApproval, ///< registered, and switched off or not yet allowed elsewhere
    notFound          ///< it can't be: the program or the place to register it is missing
};

/// The desktop's list of programs to start with a session, as far as it concerns this one. [main
/// queue]
class LoginItemService {
public:
    virtual ~LoginItemService() = default;

    /// As it is now, whoever changed it.
    [[nodiscard]] virtual LoginItemStatus status() = 0;

    // Both answer why it didn't work, or nothing. Where a person is asked first, the status follows
    // later.
    virtual std::optional<std::string> registerItem() = 0;
    virtual std::optional<std::string> unregisterItem() = 0;

    /// Calls `changed` when the status changed without a call of these.
    virtual void onChanged(std::function<void()> changed) = 0;
};

} // namespace fadewell
