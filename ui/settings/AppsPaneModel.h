#pragma once

#include "base/Subscription.h"
#include "ui/settings/RememberedAppsModel.h"
#include "ui/settings/SettingsParts.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace fadewell {

/// What the apps pane reads and calls. [main thread]
class AppsPaneModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the settings window")
    Q_PROPERTY(fadewell::RememberedAppsModel* apps READ apps CONSTANT)

public:
    explicit AppsPaneModel(const SettingsParts& parts);

    [[nodiscard]] RememberedAppsModel* apps() { return &apps_; }

    Q_INVOKABLE void forget(const QString& appID);
    /// After the user has confirmed it.
    Q_INVOKABLE void forgetAll();

private:
    const SettingsParts& parts_;
    RememberedAppsModel apps_{this};
    Subscription observer_;
};

} // namespace fadewell
