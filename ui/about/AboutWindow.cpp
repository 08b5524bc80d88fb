#include "ui/about/AboutWindow.h"

#include "ui/about/AboutCredits.h"
#include "ui/style/Style.h"

#include <QCoreApplication>
#include <QEvent>
#include <QIcon>
#include <QMetaObject>
#include <QQmlEngine>
#include <QQuickView>
#include <QUrl>
#include <QVariant>

namespace fadewell {

AboutWindow::AboutWindow() = default;
AboutWindow::~AboutWindow() = default;

void AboutWindow::show()
{
    if (!view_) {
        load();
    }
    view_->show();
    view_->raise();
    view_->requestActivate();
}

void AboutWindow::load()
{
    const auto credits = AboutCredits::current();
    view_ = std::make_unique<QQuickView>();
    installStyle(*view_->engine());
    view_->installEventFilter(this);
    view_->setTitle(QCoreApplication::translate("AboutWindow", "About Fadewell"));
    view_->setFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    view_->setResizeMode(QQuickView::SizeRootObjectToView);
    view_->setInitialProperties({{"version", QCoreApplication::applicationVersion()},
                                 {"creditsHeading", credits.heading},
                                 {"creditsNotice", credits.notice}});
    view_->setSource(QUrl("qrc:/qml/Fadewell/About/AboutView.qml"));
    view_->setMinimumSize(view_->initialSize());
    view_->setMaximumSize(view_->initialSize());
}

bool AboutWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == view_.get() && event->type() == QEvent::Close) {
        // After the window is done with this event.
        QMetaObject::invokeMethod(
            this, [this] { view_.reset(); }, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace fadewell
