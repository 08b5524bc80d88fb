#pragma once

#include "ui/settings/AppsPaneModel.h"
#include "ui/settings/CallsPaneModel.h"
#include "ui/settings/GeneralPaneModel.h"
#include "ui/settings/ShortcutsPaneModel.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace fadewell {

/// The panes of the settings window, and which one is shown. [main thread]
class SettingsModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the settings window")
    Q_PROPERTY(QString pane READ pane WRITE setPane NOTIFY paneChanged)
    Q_PROPERTY(fadewell::GeneralPaneModel* general READ general CONSTANT)
    Q_PROPERTY(fadewell::CallsPaneModel* calls READ calls CONSTANT)
    Q_PROPERTY(fadewell::AppsPaneModel* apps READ apps CONSTANT)
    Q_PROPERTY(fadewell::ShortcutsPaneModel* shortcuts READ shortcuts CONSTANT)

public:
    explicit SettingsModel(SettingsParts parts);

    /// "general", "calls", "apps" or "shortcuts"; kept for the next time. What is stored of another
    /// kind counts as "general".
    [[nodiscard]] QString pane() const;
    void setPane(const QString& pane);

    [[nodiscard]] GeneralPaneModel* general() { return &general_; }
    [[nodiscard]] CallsPaneModel* calls() { return &calls_; }
    [[nodiscard]] AppsPaneModel* apps() { return &apps_; }
    [[nodiscard]] ShortcutsPaneModel* shortcuts() { return &shortcuts_; }

signals:
    void paneChanged();

private:
    const SettingsParts parts_; ///< the panes refer to it
    GeneralPaneModel general_;
    CallsPaneModel calls_;
    AppsPaneModel apps_;
    ShortcutsPaneModel shortcuts_;
};

} // namespace fadewell
