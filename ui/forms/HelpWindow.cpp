#include "ui/forms/HelpWindow.h"

#include "ui/forms/Forms.h"

#include <QFile>
#include <QQmlEngine>
#include <QQuickView>
#include <QUrl>
#include <QVariant>

namespace fadewell {
namespace {

QString title(SystemPage page)
{
    return page == SystemPage::audioPermission ? HelpWindow::tr("Allowing Access to App Sound")
                                               : HelpWindow::tr("Opening Fadewell at Login");
}

QStringList audioPermission()
{
    QStringList paragraphs{
        HelpWindow::tr("To change an app’s volume, Fadewell takes its sound from the sound system, "
                       "PipeWire, and gives it back louder or quieter. PipeWire doesn’t let it.")};
    if (QFile::exists("/.flatpak-info")) {
        paragraphs << HelpWindow::tr("Fadewell runs in a sandbox. Let it reach PipeWire with this "
                                     "command, and then open Fadewell again:")
                   << "flatpak override --user --filesystem=xdg-run/pipewire-0 "
                      "app.fadewell.Fadewell";
        return paragraphs;
    }
    return paragraphs
           << HelpWindow::tr(
                  "Usually every app of yours may do this. A rule of the session manager, "
                  "WirePlumber, takes the right away: look for one about “access” or "
                  "“permissions” in these folders, and remove it:")
           << "~/.config/wireplumber\n/etc/wireplumber"
           << HelpWindow::tr("Then restart the session manager with this command. Fadewell notices "
                             "by itself that it is allowed.")
           << "systemctl --user restart wireplumber";
}

QStringList loginItems()
{
    return {
        HelpWindow::tr("Your desktop keeps Fadewell from opening at login. Its settings have a "
                       "list of the apps that open then, often called “Autostart” or “Startup "
                       "Applications”: switch Fadewell on there."),
        HelpWindow::tr("Where a desktop has no such list, Fadewell’s file in this folder decides; "
                       "a line “Hidden=true” in it means off:"),
        "~/.config/autostart"};
}

} // namespace

void HelpWindow::show(SystemPage page)
{
    if (page != page_) {
        page_ = page;
        unload();
    }
    ViewWindow::show();
}

std::unique_ptr<QObject> HelpWindow::load(QQuickView& view)
{
    installForms(*view.engine());
    view.setTitle(title(page_));
    view.setInitialProperties(
        {{"title", title(page_)},
         {"paragraphs", page_ == SystemPage::audioPermission ? audioPermission() : loginItems()}});
    view.setSource(QUrl("qrc:/qml/Fadewell/Forms/HelpView.qml"));
    fix(view, view.initialSize());
    return nullptr;
}

} // namespace fadewell
