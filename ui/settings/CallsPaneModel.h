#pragma once

#include "base/Subscription.h"
#include "ui/settings/CallAppsModel.h"
#include "ui/settings/SettingsParts.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace fadewell {

/// What the calls pane reads and calls. Each change is saved and takes effect at once. [main
/// thread]
class CallsPaneModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the settings window")
    Q_PROPERTY(bool isAutomatic READ isAutomatic NOTIFY changed)
    Q_PROPERTY(double level READ level NOTIFY changed)
    Q_PROPERTY(QString levelText READ levelText NOTIFY changed)
    Q_PROPERTY(QString widestLevelText READ widestLevelText CONSTANT)
    Q_PROPERTY(fadewell::CallAppsModel* apps READ apps CONSTANT)

public:
    explicit CallsPaneModel(const SettingsParts& parts);

    [[nodiscard]] bool isAutomatic() const { return settings().isAutomatic; }
    /// 0 to 1.
    [[nodiscard]] double level() const { return settings().level(); }
    [[nodiscard]] QString levelText() const;
    [[nodiscard]] QString widestLevelText() const;
    [[nodiscard]] CallAppsModel* apps() { return &apps_; }

    Q_INVOKABLE void setAutomatic(bool isAutomatic);
    Q_INVOKABLE void setLevel(double level);
    /// Whether this app's microphone use counts.
    Q_INVOKABLE void setCounts(const QString& bundleID, bool counts);

signals:
    void changed();

private:
    [[nodiscard]] const CallModeSettings& settings() const;

    const SettingsParts& parts_;
    CallAppsModel apps_;
    Subscription observer_;
};

} // namespace fadewell
