#pragma once

#include "ui/settings/SettingsParts.h"
#include "ui/style/ViewWindow.h"

namespace fadewell {

/// The settings window. [main thread, with a QGuiApplication]
class SettingsWindow final : public ViewWindow {
    Q_OBJECT

public:
    explicit SettingsWindow(SettingsParts parts);

protected:
    std::unique_ptr<QObject> load(QQuickView& view) override;

private:
    SettingsParts parts_;
};

} // namespace fadewell
