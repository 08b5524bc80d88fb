#pragma once

#include "ui/style/Appearance.h"

#include <string>
#include <vector>

namespace CLI {
class App;
}

/// What both previews do with their one window. [main thread, with a QGuiApplication]
namespace fadewell::preview {

/// The options of a preview for how the desktop looks.
void addAppearanceOptions(CLI::App& app, Appearance& appearance);

/// What to do with the window once it is there.
struct Visit {
    std::vector<std::string> presses; ///< object names of buttons, in order
    std::string picture;              ///< a file for a picture of it; empty: it stays open
};

/// Adds --press and --picture.
void addVisitOptions(CLI::App& app, Visit& visit);

/// Visits the window in `delay` milliseconds. Ends the program after the picture, with 1 if there
/// is none.
void visitLater(const Visit& visit, int delay);

} // namespace fadewell::preview
