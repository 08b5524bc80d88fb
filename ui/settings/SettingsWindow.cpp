#include "ui/settings/SettingsWindow.h"

#include "ui/AppIconProvider.h"
#include "ui/forms/Forms.h"
#include "ui/settings/SettingsModel.h"
#include "ui/shortcuts/RecorderModule.h"

#include <QCoreApplication>
#include <QQmlEngine>
#include <QQuickView>
#include <QUrl>
#include <QVariant>

#include <utility>

extern void qml_register_types_Fadewell_Settings();

namespace fadewell {
namespace {

constexpr int mostHeight = 680; // A window that fills the screen would hide what it is about.

} // namespace

SettingsWindow::SettingsWindow(SettingsParts parts)
    : parts_(std::move(parts))
{}

std::unique_ptr<QObject> SettingsWindow::load(QQuickView& view)
{
    qml_register_types_Fadewell_Settings();
    auto model = std::make_unique<SettingsModel>(parts_);
    installForms(*view.engine());
    installRecorder();
    view.engine()->addImageProvider(QStringLiteral("appicon"), new AppIconProvider);
    view.setTitle(QCoreApplication::translate("SettingsWindow", "Fadewell Settings"));
    view.setInitialProperties({{"settings", QVariant::fromValue(model.get())}});
    view.setSource(QUrl(QStringLiteral("qrc:/qml/Fadewell/Settings/SettingsView.qml")));
    fitToContent(view, mostHeight);
    return model;
}

} // namespace fadewell
