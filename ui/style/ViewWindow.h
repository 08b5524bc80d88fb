#pragma once

#include <QObject>
#include <QSize>

#include <memory>
#include <optional>

class QQuickView;

namespace fadewell {

/// A window that shows one QML view: loaded when it is shown, gone when it is closed. [main thread,
/// with a QGuiApplication]
class ViewWindow : public QObject {
    Q_OBJECT

public:
    ~ViewWindow() override;

    /// Opens it, or brings it to the front.
    void show();
    [[nodiscard]] bool isOpen() const { return view_ != nullptr; }

signals:
    /// It has been closed, and its view is gone.
    void closed();

protected:
    ViewWindow();

    /// Gives the view its title, its first properties and its source. What the view uses is
    /// returned, if anything, and lives as long as the view.
    virtual std::unique_ptr<QObject> load(QQuickView& view) = 0;
    /// The user closes it, in whichever way.
    virtual void aboutToClose() {}

    /// The window can't be resized.
    static void fix(QQuickView& view, const QSize& size);
    /// Keeps the window as large as the content; content that scrolls as far as the screen and
    /// `mostHeight` let it.
    static void fitToContent(QQuickView& view, std::optional<int> mostHeight = {});
    /// The next `show` loads it anew.
    void unload();

    [[nodiscard]] QQuickView* view() const { return view_.get(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void closeView();

    std::unique_ptr<QObject> model_;   ///< what `view_` uses
    std::unique_ptr<QQuickView> view_; ///< absent while it is closed
};

} // namespace fadewell
