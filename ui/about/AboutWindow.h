#pragma once

#include <QObject>

#include <memory>

class QQuickView;

namespace fadewell {

/// The about window: icon, name, version, copyright and acknowledgements. Loaded when it is shown,
/// gone when it is closed. [main thread, with a QGuiApplication]
class AboutWindow final : public QObject {
    Q_OBJECT

public:
    AboutWindow();
    ~AboutWindow() override;

    /// Opens it, or brings it to the front.
    void show();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void load();

    std::unique_ptr<QQuickView> view_; ///< absent while it is closed
};

} // namespace fadewell
