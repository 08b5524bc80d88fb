#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace fadewell::shortcuts {

/// An entry of the application's menu.
struct MenuItem {
    std::string title;
    std::string keyEquivalent{};     ///< a character; an upper-case letter includes shift
    std::uint32_t modifierFlags = 0; ///< see event::, as the keys that are really pressed
    std::vector<MenuItem> submenu{};
};

/// A question to the user. The first button is the default one.
struct Alert {
    std::string message;
    std::string informativeText{};
    std::vector<std::string> buttons;

    bool operator==(const Alert&) const = default;
};

constexpr int alertFirstButton = 1000;
constexpr int alertSecondButton = 1001;

/// The field and the window around a recorder. [main]
class RecorderHost {
public:
    virtual ~RecorderHost() = default;

    /// Shows the alert and calls `answered`, at once or later, with the button's number.
    virtual void present(const Alert& alert, std::function<void(int answer)> answered) = 0;
    /// Takes the keyboard away from the field.
    virtual void clearFirstResponder() = 0;
    [[nodiscard]] virtual std::vector<MenuItem> mainMenu() const = 0;
};

} // namespace fadewell::shortcuts
