#include "ui/forms/SystemPages.h"

#include <QCoreApplication>
#include <QProcess>
#include <QStandardPaths>

#include <array>
#include <utility>

namespace fadewell {
namespace {

struct Candidate {
    const char* desktop;
    const char* command;
};

// Nothing graphical grants the right to take sound: rules of the session manager do.
constexpr std::array<Candidate, 9> loginItemPages{{{"KDE", "systemsettings kcm_autostart"},
                                                   {"KDE", "systemsettings5 kcm_autostart"},
                                                   {"GNOME", "gnome-session-properties"},
                                                   {"GNOME", "gnome-tweaks"},
                                                   {"XFCE", "xfce4-session-settings"},
                                                   {"LXQt", "lxqt-config-session"},
                                                   {"MATE", "mate-session-properties"},
                                                   {"X-Cinnamon", "cinnamon-settings startup"},
                                                   {"Budgie", "gnome-tweaks"}}};

} // namespace

SystemPages::SystemPages(Environment environment)
    : environment_(std::move(environment))
{}

SystemPages SystemPages::ofSession(std::function<void(SystemPage page)> explain)
{
    return SystemPages(
        {.desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(':', Qt::SkipEmptyParts),
         .isInstalled =
             [](const QString& program) {
                 return !QStandardPaths::findExecutable(program).isEmpty();
             },
         .start =
             [](const QString& program, const QStringList& arguments) {
                 return QProcess::startDetached(program, arguments);
             },
         .explain = std::move(explain)});
}

QString SystemPages::openTitle(SystemPage page) const
{
    return command(page).isEmpty()
               ? QCoreApplication::translate("SystemPages", "How to Allow It…")
               : QCoreApplication::translate("SystemPages", "Open System Settings");
}

void SystemPages::open(SystemPage page) const
{
    auto command = this->command(page);
    if (command.isEmpty()) {
        environment_.explain(page);
        return;
    }
    const auto program = command.takeFirst();
    if (!environment_.start(program, command)) {
        environment_.explain(page);
    }
}

QStringList SystemPages::command(SystemPage page) const
{
    if (page != SystemPage::loginItems) {
        return {};
    }
    for (const auto& [desktop, text] : loginItemPages) {
        const auto command = QString::fromLatin1(text).split(' ');
        if (environment_.desktops.contains(QLatin1String(desktop)) &&
            environment_.isInstalled(command.front()))
        {
            return command;
        }
    }
    return {};
}

} // namespace fadewell
