#include "ui/diagnostics/DiagnosticsWindow.h"

#include "ui/diagnostics/DiagnosticsModel.h"
#include "ui/forms/Forms.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMetaObject>
#include <QQmlEngine>
#include <QQuickView>
#include <QUrl>
#include <QVariant>

#include <utility>

extern void qml_register_types_Fadewell_Diagnostics();

namespace fadewell {

DiagnosticsWindow::DiagnosticsWindow(std::function<std::string(bool withNames)> gather)
    : gather_(std::move(gather))
{}

DiagnosticsWindow::~DiagnosticsWindow() = default;

void DiagnosticsWindow::show()
{
    if (!view_) {
        load();
    }
    view_->show();
    view_->raise();
    view_->requestActivate();
}

void DiagnosticsWindow::load()
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
    model_ = std::make_unique<DiagnosticsModel>(std::move(parts));
    view_ = std::make_unique<QQuickView>();
    installForms(*view_->engine());
    view_->installEventFilter(this);
    view_->setTitle(QCoreApplication::translate("DiagnosticsWindow", "Diagnostics"));
    view_->setFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                    Qt::WindowMaximizeButtonHint);
    view_->setResizeMode(QQuickView::SizeRootObjectToView);
    view_->setInitialProperties({{"diagnostics", QVariant::fromValue(model_.get())}});
    view_->setSource(QUrl(QStringLiteral("qrc:/qml/Fadewell/Diagnostics/DiagnosticsView.qml")));
    view_->setMinimumSize({480, 320});
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
        dialog->windowHandle()->setTransientParent(view_.get());
    }
    dialog->open();
}

bool DiagnosticsWindow::eventFilter(QObject* watched, QEvent* event)
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
