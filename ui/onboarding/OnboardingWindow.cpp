#include "ui/onboarding/OnboardingWindow.h"

#include "ui/forms/Forms.h"
#include "ui/onboarding/OnboardingModel.h"

#include <QCoreApplication>
#include <QEvent>
#include <QMetaObject>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QScreen>
#include <QUrl>
#include <QVariant>

#include <utility>

extern void qml_register_types_Fadewell_Onboarding();

// The pictures are in a static library, from which the linker takes only what is named.
static void loadPictures()
{
    Q_INIT_RESOURCE(onboarding_pictures);
}

namespace fadewell {

OnboardingWindow::OnboardingWindow(OnboardingParts parts)
    : parts_(std::move(parts))
{}

OnboardingWindow::~OnboardingWindow() = default;

void OnboardingWindow::show()
{
    if (!view_) {
        load();
    }
    view_->show();
    view_->raise();
    view_->requestActivate();
}

void OnboardingWindow::load()
{
    loadPictures();
    qml_register_types_Fadewell_Onboarding();
    model_ = std::make_unique<OnboardingModel>(parts_);
    connect(model_.get(), &OnboardingModel::finished, this, [this] { view_->close(); });
    view_ = std::make_unique<QQuickView>();
    installForms(*view_->engine());
    view_->installEventFilter(this);
    view_->setTitle(QCoreApplication::translate("OnboardingWindow", "Welcome to Fadewell"));
    view_->setFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    view_->setResizeMode(QQuickView::SizeRootObjectToView);
    view_->setInitialProperties({{"onboarding", QVariant::fromValue(model_.get())}});
    view_->setSource(QUrl(QStringLiteral("qrc:/qml/Fadewell/Onboarding/OnboardingView.qml")));
    connect(
        view_->rootObject(), &QQuickItem::implicitHeightChanged, this, [this] { fitToContent(); });
    fitToContent();
    const auto screen = view_->screen()->availableGeometry();
    view_->setPosition(screen.center() - QPoint(view_->width() / 2, view_->height() / 2));
}

void OnboardingWindow::fitToContent()
{
    const auto* content = view_->rootObject();
    const QSize size(qCeil(content->implicitWidth()), qCeil(content->implicitHeight()));
    view_->setMinimumSize(size);
    view_->setMaximumSize(size);
    view_->resize(size);
}

bool OnboardingWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == view_.get() && event->type() == QEvent::Close) {
        parts_.defaults->set(completedKey, true);
        // After the window is done with this event.
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (view_ && !view_->isVisible()) { // Nobody has opened it again meanwhile.
                    view_.reset();
                    model_.reset();
                    emit closed();
                }
            },
            Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace fadewell
