#pragma once

#include "ui/style/ViewWindow.h"

namespace fadewell {

/// The about window: icon, name, version, copyright and acknowledgements. [main thread, with a
/// QGuiApplication]
class AboutWindow final : public ViewWindow {
    Q_OBJECT

protected:
    std::unique_ptr<QObject> load(QQuickView& view) override;
};

} // namespace fadewell
