#pragma once

namespace fadewell {

/// A window of the program.
enum class AppWindow {
    panel,
    settings,
    onboarding,
    about
};

/// The program's windows; absent where it runs without a display. [main queue]
class AppWindows {
public:
    virtual ~AppWindows() = default;

    /// Whether this program has that window. What would lead to one that it hasn't is not offered.
    [[nodiscard]] virtual bool offers(AppWindow window) const = 0;

    /// Opens a window, or brings it to the front when it is open. Does nothing for one that is not
    /// offered.
    virtual void show(AppWindow window) = 0;
};

} // namespace fadewell
