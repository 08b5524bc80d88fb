#pragma once

#include "ui/diagnostics/DiagnosticsParts.h"

#include <QObject>

#include <functional>
#include <memory>
#include <string>

class QQuickView;

namespace fadewell {

class DiagnosticsModel;

/// Shows what helps to find a fault, to read, copy or save it. Gathered when it is shown, gone when
/// it is closed. [main thread, with a QApplication]
class DiagnosticsWindow final : public QObject {
    Q_OBJECT

public:
    explicit DiagnosticsWindow(std::function<std::string(bool withNames)> gather);
    ~DiagnosticsWindow() override;

    /// Opens it, or brings it to the front.
    void show();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void load();
    void chooseFile(std::function<void(const QString& path)> chosen);

    std::function<std::string(bool withNames)> gather_;
    std::unique_ptr<DiagnosticsModel> model_;
    std::unique_ptr<QQuickView> view_; ///< absent while it is closed; uses `model_`
};

} // namespace fadewell
