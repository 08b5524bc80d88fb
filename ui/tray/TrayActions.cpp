#include "ui/tray/TrayActions.h"

#include "ui/tray/TrayMenu.h"

#include <utility>

namespace fadewell {

TrayActions::TrayActions(Parts parts)
    : parts_(std::move(parts))
{}

void TrayActions::activate(const std::optional<QRect>& icon)
{
    parts_.togglePanel(icon);
}

void TrayActions::activateSecondary()
{
    if (canToggleMicrophone(*parts_.model)) {
        parts_.model->toggleMicrophone();
    }
}

void TrayActions::step(int steps)
{
    constexpr double tenth = 0.1;
    if (steps != 0) {
        parts_.model->stepFrontmostApp(steps * tenth);
    }
}

void TrayActions::run(TrayCommand command)
{
    switch (command) {
    case TrayCommand::none:
        break;
    case TrayCommand::openMixer:
        parts_.windows.show(AppWindow::panel);
        break;
    case TrayCommand::toggleMicrophone:
        activateSecondary();
        break;
    case TrayCommand::toggleCallMode:
        parts_.model->toggleCallMode();
        break;
    case TrayCommand::settings:
        parts_.windows.show(AppWindow::settings);
        break;
    case TrayCommand::about:
        parts_.windows.show(AppWindow::about);
        break;
    case TrayCommand::quit:
        parts_.quit();
        break;
    }
}

} // namespace fadewell
