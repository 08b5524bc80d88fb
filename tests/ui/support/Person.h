#pragma once

#include <filesystem>

namespace fadewell::integration {

/// A part of the screen, in pixels.
struct Bounds {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool operator==(const Bounds&) const = default;
};

/// Clicks with the left button. Throws std::runtime_error when the screen takes no clicks.
void click(int x, int y);
/// Presses and releases a key (an X11 key symbol) for the window that has the keyboard. Throws as
/// click() does.
void strike(unsigned keySymbol);

/// A PNG of a part of the screen, once it has stopped changing. Throws std::runtime_error when none
/// can be taken.
void takePicture(const std::filesystem::path& file, const Bounds& bounds);

} // namespace fadewell::integration
