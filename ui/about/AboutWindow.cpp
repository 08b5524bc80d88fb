#include "ui/about/AboutWindow.h"

#include "ui/about/AboutCredits.h"
#include "ui/style/Style.h"

#include <QCoreApplication>
#include <QQmlEngine>
#include <QQuickView>
#include <QUrl>
#include <QVariant>

namespace fadewell {

std::unique_ptr<QObject> AboutWindow::load(QQuickView& view)
{
    const auto credits = AboutCredits::current();
    installStyle(*view.engine());
    view.setTitle(QCoreApplication::translate("AboutWindow", "About Fadewell"));
    view.setInitialProperties({{"version", QCoreApplication::applicationVersion()},
                               {"creditsHeading", credits.heading},
                               {"creditsNotice", credits.notice}});
    view.setSource(QUrl("qrc:/qml/Fadewell/About/AboutView.qml"));
    fix(view, view.initialSize());
    return nullptr;
}

} // namespace fadewell
