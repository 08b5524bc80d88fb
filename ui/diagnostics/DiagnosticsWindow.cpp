#include "ui/diagnostics/DiagnosticsWindow.h"

#include "ui/diagnostics/DiagnosticsModel.h"
#include "ui/forms/Forms.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickView>
#include <QUrl>
#include <QVariant>

#include <utility>

extern void qml_register_types_Fadewell_Diagnostics();

namespace fadewell {

DiagnosticsWindow::DiagnosticsWindow(GatherDiagnostics gather)
    : gather_(std::move(gather))
{}

std::unique_ptr<QObject> DiagnosticsWindow::load(QQuickView& view)
{
    qml_register_types_Fadewell_Diagnostics();
    DiagnosticsParts parts;
    parts.gather = gather_;
    parts.copy = [](const QString& text) {
        QGuiApplication::clipboard()->setText(text);
    };
    parts.chooseFile = [this](auto chosen) {
        chooseFile(std::move(chosen));
    };
    auto model = std::make_unique<DiagnosticsModel>(std::move(parts));
    installForms(*view.engine());
    view.setTitle(QCoreApplication::translate("DiagnosticsWindow", "Diagnostics"));
    view.setFlag(Qt::WindowMaximizeButtonHint);
    view.setInitialProperties({{"diagnostics", QVariant::fromValue(model.get())}});
    view.setSource(QUrl(QStringLiteral("qrc:/qml/Fadewell/Diagnostics/DiagnosticsView.qml")));
    view.setMinimumSize({480, 320});
    return model;
}

void DiagnosticsWindow::chooseFile(std::function<void(const QString& path)> chosen)
{
    auto* const dialog = new QFileDialog(
        nullptr, QCoreApplication::translate("DiagnosticsWindow", "Save Diagnostics"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setDirectory(QDir::home());
    dialog->selectFile(QStringLiteral("fadewell-diagnostics.txt"));
    connect(dialog,
            &QFileDialog::fileSelected,
            this,
            [chosen = std::move(chosen)](const auto& path) { chosen(path); });
    dialog->winId(); // Makes its window, to belong to this one.
    if (dialog->windowHandle() != nullptr) {
        dialog->windowHandle()->setTransientParent(view());
    }
    dialog->open();
}

} // namespace fadewell
