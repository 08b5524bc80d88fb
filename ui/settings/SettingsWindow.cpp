#include "ui/settings/SettingsWindow.h"

#include "ui/AppIconProvider.h"
#include "ui/forms/Forms.h"
#include "ui/settings/SettingsModel.h"
#include "ui/shortcuts/RecorderModule.h"

#include <QCoreApplication>
#include <QEvent>
#include <QMetaObject>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QScreen>
#include <QUrl>
#include <QVariant>

#include <algorithm>
#include <utility>

extern void qml_register_types_Fadewell_Settings();

namespace fadewell {
namespace {

constexpr int mostHeight = 680; // A window that fills the screen would hide what it is about.

} // namespace

SettingsWindow::SettingsWindow(SettingsParts parts)
    : parts_(std::move(parts))
{}

SettingsWindow::~SettingsWindow() = default;

void SettingsWindow::show()
{
    if (!view_) {
        load();
    }
    view_->show();
    view_->raise();
    view_->requestActivate();
}

void SettingsWindow::load()
{
    qml_register_types_Fadewell_Settings();
    model_ = std::make_unique<SettingsModel>(parts_);
    view_ = std::make_unique<QQuickView>();
    installForms(*view_->engine());
    installRecorder();
    view_->engine()->addImageProvider(QStringLiteral("appicon"), new AppIconProvider);
    view_->installEventFilter(this);
    view_->setTitle(QCoreApplication::translate("SettingsWindow", "Fadewell Settings"));
    view_->setFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    view_->setResizeMode(QQuickView::SizeRootObjectToView);
    view_->setInitialProperties({{"settings", QVariant::fromValue(model_.get())}});
    view_->setSource(QUrl(QStringLiteral("qrc:/qml/Fadewell/Settings/SettingsView.qml")));
    connect(
        view_->rootObject(), &QQuickItem::implicitHeightChanged, this, [this] { fitToContent(); });
    fitToContent();
}

void SettingsWindow::fitToContent()
{
    const auto* content = view_->rootObject();
    const int available = view_->screen()->availableGeometry().height() - 60; // for its title bar
    const QSize size(qCeil(content->implicitWidth()),
                     std::min({qCeil(content->implicitHeight()), mostHeight, available}));
    view_->setMinimumSize(size);
    view_->setMaximumSize(size);
    view_->resize(size);
}

bool SettingsWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == view_.get() && event->type() == QEvent::Close) {
        // After the window is done with this event.
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (view_ && !view_->isVisible()) { // Nobody has opened it again meanwhile.
                    view_.reset();
                    model_.reset();
                }
            },
            Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace fadewell
