#include "ui/onboarding/OnboardingWindow.h"

#include "ui/forms/Forms.h"
#include "ui/onboarding/OnboardingModel.h"

#include <QCoreApplication>
#include <QQmlEngine>
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

std::unique_ptr<QObject> OnboardingWindow::load(QQuickView& view)
{
    loadPictures();
    qml_register_types_Fadewell_Onboarding();
    auto model = std::make_unique<OnboardingModel>(parts_);
    connect(model.get(), &OnboardingModel::finished, &view, &QWindow::close);
    installForms(*view.engine());
    view.setTitle(QCoreApplication::translate("OnboardingWindow", "Welcome to Fadewell"));
    view.setInitialProperties({{"onboarding", QVariant::fromValue(model.get())}});
    view.setSource(QUrl(QStringLiteral("qrc:/qml/Fadewell/Onboarding/OnboardingView.qml")));
    fitToContent(view);
    const auto screen = view.screen()->availableGeometry();
    view.setPosition(screen.center() - QPoint(view.width() / 2, view.height() / 2));
    return model;
}

void OnboardingWindow::aboutToClose()
{
    parts_.defaults->set(completedKey, true);
}

} // namespace fadewell
