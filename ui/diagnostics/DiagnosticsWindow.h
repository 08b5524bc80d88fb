#pragma once

#include "app/GatherDiagnostics.h"
#include "ui/style/ViewWindow.h"

#include <functional>
#include <memory>

namespace fadewell {

/// Shows what helps to find a fault, to read, copy or save it. Gathered when it is shown. [main
/// thread, with a QApplication]
class DiagnosticsWindow final : public ViewWindow {
    Q_OBJECT

public:
    explicit DiagnosticsWindow(GatherDiagnostics gather);

protected:
    std::unique_ptr<QObject> load(QQuickView& view) override;

private:
    void chooseFile(std::function<void(const QString& path)> chosen);

    GatherDiagnostics gather_;
};

} // namespace fadewell
