#include "ui/forms/HelpWindow.h"

#include "ui/forms/Forms.h"

#include <QEvent>
#include <QFile>
#include <QMetaObject>
#include <QQmlEngine>
#include <QQuickItem>
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

HelpWindow::HelpWindow() = default;
HelpWindow::~HelpWindow() = default;

void HelpWindow::show(SystemPage page)
{
    if (!view_ || page != page_) {
        page_ = page;
        view_ = std::make_unique<QQuickView>();
        installForms(*view_->engine());
        view_->installEventFilter(this);
        view_->setTitle(title(page));
        view_->setFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
        view_->setInitialProperties(
            {{"title", title(page)},
             {"paragraphs",
              page == SystemPage::audioPermission ? audioPermission() : loginItems()}});
        view_->setSource(QUrl("qrc:/qml/Fadewell/Forms/HelpView.qml"));
        view_->setMinimumSize(view_->initialSize());
        view_->setMaximumSize(view_->initialSize());
    }
    view_->show();
    view_->raise();
    view_->requestActivate();
}

bool HelpWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == view_.get() && event->type() == QEvent::Close) {
        // After the window is done with this event.
        QMetaObject::invokeMethod(
            this, [this] { view_.reset(); }, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace fadewell
