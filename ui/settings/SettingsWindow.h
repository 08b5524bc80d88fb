#pragma once

#include "ui/settings/SettingsParts.h"

#include <QObject>

#include <memory>

class QQuickView;

namespace fadewell {

class SettingsModel;

/// The settings window. Loaded when it is shown, gone when it is closed. [main thread, with a
/// QGuiApplication]
class SettingsWindow final : public QObject {
    Q_OBJECT

public:
    explicit SettingsWindow(SettingsParts parts);
    ~SettingsWindow() override;

    /// Opens it, or brings it to the front.
    void show();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void load();
    void fitToContent();

    SettingsParts parts_;
    std::unique_ptr<SettingsModel> model_;
    std::unique_ptr<QQuickView> view_; ///< absent while it is closed; uses `model_`
};

} // namespace fadewell
